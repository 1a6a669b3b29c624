// An addition to a number of stored records, and a load of them.
//
// The floor of an addition asks the kinds for the same names and attributes, puts them, escaped, onto one string that
// has the room, and writes that in one call in place of the file, under the same lock. The floor of a load does that
// once for each record. The parts of an addition are the rendering and the whole without the syncs, and without the
// syncs and the calls for the saving note; those that can be had alone are in EnhancementsParts.cpp. The additions by
// peers are in EnhancementsPeers.cpp. All files are in the directory for temporary files.
//
// [heap/document] is the most that comes onto the heap at a time beside the records, divided by the size of the
// document; [kept/document] is what of it stays there after a load.

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Domain/Shared/EnhancementsForReferenceModel/SampleRecords.h"
#include "Support/HeapPeak.h"
#include "Support/TemporaryDirectory.h"
#include "Utilities/SystemCalls.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using orv::tests::contentOf;
using orv::tests::TemporaryDirectory;

// Ours

/// Stores the records in a file of their own, in place of those that were stored before.
void store(const std::string& path, Records records) {
    EnhancementsFile::setFilePath(path);
    *Enhancements::getOrCreateEnhancementsDb() = Enhancements();
    if (!Enhancements::addEnhancements(records)) {
        std::abort();
    }
}

void addOurs(benchmark::State& state) {
    const TemporaryDirectory directory;
    const std::string path = directory / "store.xml";
    store(path, makeMarks(state.range()));
    for ([[maybe_unused]] const auto iteration : state) {
        auto mark = makeMark(static_cast<int>(state.range()));
        const auto start = Clock::now();
        Enhancements::addEnhancement(std::move(mark));
        state.SetIterationTime(Seconds(Clock::now() - start).count());
        // The file is brought back to the old number of records.
        Enhancements::takeRecord(*Enhancements::getOrCreateEnhancementsDb()->getRecords().back());
    }
    const orv::benchmarks::HeapPeak heap;
    Enhancements::addEnhancement(makeMark(static_cast<int>(state.range())));
    state.counters["heap/document"] =
        static_cast<double>(heap.bytes()) / static_cast<double>(std::filesystem::file_size(path));
}

// The parts of ours

void addUnsynced(benchmark::State& state) {
    const auto sync = std::exchange(orv::utilities::systemCalls.sync,
                                    [](orv::utilities::Handle /*file*/) { return orv::utilities::done; });
    addOurs(state);
    orv::utilities::systemCalls.sync = sync;
}

/// Without the syncs and, since the directory seems to take no new file, without the saving note.
void addNoteless(benchmark::State& state) {
    using namespace orv::utilities;
    static const auto openReally = systemCalls.open;
    systemCalls.open = [](const std::filesystem::path& path, Opening opening, Handle& opened) {
        return opening == Opening::MakeNew ? std::errc::permission_denied : openReally(path, opening, opened);
    };
    addUnsynced(state);
    systemCalls.open = openReally;
}

/// Takes all that is written to it.
class Sink : public std::streambuf {
protected:
    std::streamsize xsputn(const char* /*text*/, std::streamsize size) override { return size; }
};

void renderOurs(benchmark::State& state) {
    const TemporaryDirectory directory;
    store(directory / "store.xml", makeMarks(state.range()));
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    Sink sink;
    std::ostream stream(&sink);
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        EnhancementsFile(*database).write(stream);
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}

// The floor

void appendEscaped(std::string& out, std::string_view text) {
    for (const char character : text) {
        switch (character) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out += character;
        }
    }
}

void appendElement(std::string& out, std::string_view name, std::string_view text) {
    out.append("    <").append(name).append(">");
    appendEscaped(out, text);
    out.append("</").append(name).append(">\n");
}

void writeFloor(const std::string& path, std::string& document, const Records& records, std::size_t count) {
    document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements>\n";
    for (std::size_t index = 0; index < count; ++index) {
        EnhancementBase& record = *records[index];
        const std::string kind = record.getEntityName();
        document.append("  <").append(kind).append(">\n");
        appendElement(document, "OwnerId", record.ownerId.toString(false));
        for (const auto& [name, value] : record.getAttributes()) {
            appendElement(document, name, textOf(value));
        }
        document.append("  </").append(kind).append(">\n");
    }
    document += "</Enhancements>\n";
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (flock(file, LOCK_EX | LOCK_NB) != 0 ||
        pwrite(file, document.data(), document.size(), 0) != static_cast<ssize_t>(document.size())) {
        std::abort();
    }
    close(file);
}

void addFloor(benchmark::State& state) {
    const TemporaryDirectory directory;
    const auto count = static_cast<std::size_t>(state.range());
    const Records records = makeMarks(state.range() + 1);
    std::string document;
    document.reserve(1000 + 400 * records.size());
    store(directory / "store.xml", makeMarks(state.range()));
    writeFloor(directory / "floor.xml", document, records, count);
    if (contentOf(directory / "store.xml") != document) {
        state.SkipWithError("the floor writes another document");
    }
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        writeFloor(directory / "floor.xml", document, records, count + 1);
        state.SetIterationTime(Seconds(Clock::now() - start).count());
        // So that the next write makes the file longer, as ours does.
        constexpr std::size_t aboutOneRecord = 200;
        std::filesystem::resize_file(directory / "floor.xml", document.size() - aboutOneRecord);
    }
}

// Loads

/// What the function returns in a process of its own: a process loads once.
template <typename Function>
double inAnotherProcess(Function function) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        std::abort();
    }
    double result = 0;
    if (fork() == 0) {
        result = function();
        _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &result, sizeof result) != sizeof result) {
        std::abort();
    }
    close(ends[0]);
    wait(nullptr);
    return result;
}

void prepareLoad() {
    Factory::registerClass(std::make_unique<Mark>());
    *Enhancements::getOrCreateEnhancementsDb() = Enhancements();
}

void load(std::int64_t count) {
    EnhancementsFile::readFile();
    if (static_cast<std::int64_t>(Enhancements::getOrCreateEnhancementsDb()->getRecords().size()) != count) {
        std::abort();
    }
}

void loadOurs(benchmark::State& state) {
    const TemporaryDirectory directory;
    const std::string path = directory / "store.xml";
    store(path, makeMarks(state.range()));
    for ([[maybe_unused]] const auto iteration : state) {
        state.SetIterationTime(inAnotherProcess([&state] {
            prepareLoad();
            const auto start = Clock::now();
            load(state.range());
            return Seconds(Clock::now() - start).count();
        }));
    }
    const auto heapAfter = [&state](const auto& count) {
        return inAnotherProcess([&] {
            prepareLoad();
            const orv::benchmarks::HeapPeak heap;
            load(state.range());
            return static_cast<double>(count(heap));
        });
    };
    const double peak = heapAfter([](const auto& heap) { return heap.bytes(); });
    const double kept = heapAfter([](const auto& heap) { return heap.bytesNow(); });
    const double records = inAnotherProcess([&state] {
        const orv::benchmarks::HeapPeak heap;
        makeMarks(state.range());
        return static_cast<double>(heap.bytes());
    });
    const auto size = static_cast<double>(std::filesystem::file_size(path));
    state.counters["heap/document"] = (peak - records) / size;
    state.counters["kept/document"] = (kept - records) / size;
}

void loadFloor(benchmark::State& state) {
    const TemporaryDirectory directory;
    const Records records = makeMarks(state.range());
    std::string document;
    document.reserve(1000 + 400 * records.size());
    writeFloor(directory / "floor.xml", document, records, records.size());
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        for (std::size_t count = 1; count <= records.size(); ++count) {
            writeFloor(directory / "floor.xml", document, records, count);
        }
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}

void eachLoad(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 1000)->UseManualTime();
}

/// Its 10,000 rewrites take too long for five repetitions.
void longestLoad(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10000)->UseManualTime()->Iterations(1)->Repetitions(1);
}

BENCHMARK(addOurs)->Name("addRecord/ours")->Apply(eachSize);
BENCHMARK(addUnsynced)->Name("addRecord/unsynced")->Apply(eachSize);
BENCHMARK(addNoteless)->Name("addRecord/noteless")->Apply(eachSize);
BENCHMARK(renderOurs)->Name("addRecord/rendering")->Apply(eachSize);
BENCHMARK(addFloor)->Name("addRecord/floor")->Apply(eachSize);
BENCHMARK(loadOurs)->Name("load/ours")->Apply(eachLoad);
BENCHMARK(loadFloor)->Name("load/floor")->Apply(eachLoad);
BENCHMARK(loadOurs)->Name("load/ours")->Apply(longestLoad);
BENCHMARK(loadFloor)->Name("load/floor")->Apply(longestLoad);

} // namespace

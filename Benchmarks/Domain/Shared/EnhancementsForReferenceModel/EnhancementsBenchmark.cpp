// An addition to a number of stored records, and a load of them.
//
// The floor of an addition asks the kinds for the same names and attributes, puts them, escaped, onto one string that
// has the room, and writes that in one call in place of the file, under the same lock. The floor of a load does that
// once for each record. The XML peers build their document and save it into the emptied file, without a lock. SQLite
// adds a row; unlike all others it sees to it that the row is on the disk, but for WAL-NORMAL. All files are in the
// directory for temporary files.
//
// [heap/document] is the most that is on the heap at a time beside the records, divided by the size of the document.

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/HeapPeak.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <libxml/tree.h>
#include <memory>
#include <pugixml.hpp>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/wait.h>
#include <tinyxml2.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using Records = std::vector<std::unique_ptr<EnhancementBase>>;
using orv::tests::contentOf;
using orv::tests::TemporaryDirectory;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

class Mark : public EnhancementBase {
public:
    std::string getEntityName() const override { return "Mark"; }
    std::vector<std::pair<std::string, orv::object::PropertyValue>> getAttributes() const override {
        std::vector<std::pair<std::string, orv::object::PropertyValue>> attributes;
        attributes.reserve(4);
        attributes.emplace_back("Number", number);
        attributes.emplace_back("Visible", visible);
        attributes.emplace_back("Label", label);
        attributes.emplace_back("Remark", remark);
        return attributes;
    }
    void setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) override {
        EnhancementBase::setAttributes(attributes);
        for (const auto& [name, text] : attributes) {
            if (name == "Number") {
                std::from_chars(text.data(), text.data() + text.size(), number);
            } else if (name == "Visible") {
                visible = text == "true";
            } else if (name == "Label") {
                label = text;
            } else if (name == "Remark") {
                remark = text;
            }
        }
    }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<Mark>(); }

    int number = 0;
    bool visible = true;
    std::string label = "Door 12a";
    std::string remark = "Width < 80 cm & height > 2 m: \"check\" before ordering";
};

std::unique_ptr<EnhancementBase> makeMark(int number) {
    auto mark = std::make_unique<Mark>();
    mark->ownerId.data1 = static_cast<std::uint32_t>(number) * 2654435761U;
    mark->number = number;
    return mark;
}

Records makeMarks(std::int64_t count) {
    Records marks;
    while (static_cast<std::int64_t>(marks.size()) < count) {
        marks.push_back(makeMark(static_cast<int>(marks.size())));
    }
    return marks;
}

std::string textOf(const orv::object::PropertyValue& value) {
    switch (value.getIndex()) {
    case 1:
        return std::to_string(value.get<int>());
    case 3:
        return value.get<bool>() ? "true" : "false";
    default:
        return value.get<std::string>();
    }
}

// Ours

/// A host can't take records away. Here the same addition is made time and again.
Records& recordsOf(Enhancements& database) {
    return const_cast<Records&>(database.getRecords()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

/// Stores the records, in a file of their own.
Records& store(const std::string& path, Records records) {
    EnhancementsFile::setFilePath(path);
    Records& stored = recordsOf(*Enhancements::getOrCreateEnhancementsDb());
    auto last = std::move(records.back());
    records.pop_back();
    stored = std::move(records);
    Enhancements::addEnhancement(std::move(last));
    return stored;
}

void addOurs(benchmark::State& state) {
    const TemporaryDirectory directory;
    Records& records = store(directory / "store.xml", makeMarks(state.range()));
    double heap = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        auto mark = makeMark(static_cast<int>(state.range()));
        const orv::benchmarks::HeapPeak peak;
        const auto start = Clock::now();
        Enhancements::addEnhancement(std::move(mark));
        state.SetIterationTime(Seconds(Clock::now() - start).count());
        heap = static_cast<double>(peak.bytes());
        records.pop_back();
        // The file is brought back to the old number of records.
        auto last = std::move(records.back());
        records.pop_back();
        Enhancements::addEnhancement(std::move(last));
    }
    state.counters["heap/document"] = heap / static_cast<double>(std::filesystem::file_size(directory / "store.xml"));
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

// The peers

/// Runs the peer's addition for as long as it is measured.
template <typename Add>
void addPeer(benchmark::State& state, Add add) {
    const TemporaryDirectory directory;
    const Records records = makeMarks(state.range() + 1);
    const std::string path = directory / "peer";
    add(path, records);
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        add(path, records);
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}

void addPugixml(benchmark::State& state) {
    addPeer(state, [](const std::string& path, const Records& records) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("Enhancements");
        for (const auto& record : records) {
            pugi::xml_node element = root.append_child(record->getEntityName().c_str());
            element.append_child("OwnerId").text().set(record->ownerId.toString(false).c_str());
            for (const auto& [name, value] : record->getAttributes()) {
                element.append_child(name.c_str()).text().set(textOf(value).c_str());
            }
        }
        document.save_file(path.c_str(), "  ");
    });
}

void addTinyxml2(benchmark::State& state) {
    addPeer(state, [](const std::string& path, const Records& records) {
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement* root = document.NewElement("Enhancements");
        document.InsertEndChild(root);
        for (const auto& record : records) {
            tinyxml2::XMLElement* element = root->InsertNewChildElement(record->getEntityName().c_str());
            element->InsertNewChildElement("OwnerId")->SetText(record->ownerId.toString(false).c_str());
            for (const auto& [name, value] : record->getAttributes()) {
                element->InsertNewChildElement(name.c_str())->SetText(textOf(value).c_str());
            }
        }
        document.SaveFile(path.c_str());
    });
}

const xmlChar* libxml2Text(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str()); // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
}

void addLibxml2(benchmark::State& state) {
    addPeer(state, [](const std::string& path, const Records& records) {
        xmlDoc* document = xmlNewDoc(libxml2Text("1.0"));
        xmlNode* root = xmlNewNode(nullptr, libxml2Text("Enhancements"));
        xmlDocSetRootElement(document, root);
        for (const auto& record : records) {
            xmlNode* element = xmlNewChild(root, nullptr, libxml2Text(record->getEntityName()), nullptr);
            xmlNewTextChild(element, nullptr, libxml2Text("OwnerId"), libxml2Text(record->ownerId.toString(false)));
            for (const auto& [name, value] : record->getAttributes()) {
                xmlNewTextChild(element, nullptr, libxml2Text(name), libxml2Text(textOf(value)));
            }
        }
        xmlSaveFormatFileEnc(path.c_str(), document, "UTF-8", 1);
        xmlFreeDoc(document);
    });
}

/// One row more, and its commit. The table has the records as rows.
void addSqlite(benchmark::State& state, const char* pragmas) {
    const TemporaryDirectory directory;
    sqlite3* database = nullptr;
    sqlite3_stmt* insert = nullptr;
    sqlite3_open((directory / "store.sqlite").c_str(), &database);
    sqlite3_exec(database, pragmas, nullptr, nullptr, nullptr);
    sqlite3_exec(database,
                 "CREATE TABLE Mark (OwnerId TEXT, Number INTEGER, Visible INTEGER, Label TEXT, Remark TEXT); BEGIN",
                 nullptr, nullptr, nullptr);
    sqlite3_prepare_v2(database, "INSERT INTO Mark VALUES (?, ?, ?, ?, ?)", -1, &insert, nullptr);
    const auto add = [insert](EnhancementBase& record) {
        int column = 1;
        const auto bind = [&](const std::string& text) {
            sqlite3_bind_text(insert, column++, text.c_str(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
        };
        bind(record.ownerId.toString(false));
        for (const auto& [name, value] : record.getAttributes()) {
            bind(textOf(value));
        }
        const bool isAdded = sqlite3_step(insert) == SQLITE_DONE;
        sqlite3_reset(insert);
        return isAdded;
    };
    const Records records = makeMarks(state.range());
    for (const auto& record : records) {
        add(*record);
    }
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        const bool isAdded = add(*records.front());
        state.SetIterationTime(Seconds(Clock::now() - start).count());
        if (!isAdded) {
            state.SkipWithError("SQLite adds no row");
        }
    }
    sqlite3_finalize(insert);
    sqlite3_close(database);
}

// Loads

struct LoadCost {
    double seconds;
    double heap;
};

/// A process loads once, so each load is in a process of its own.
void loadOurs(benchmark::State& state) {
    const TemporaryDirectory directory;
    const std::string path = directory / "store.xml";
    store(path, makeMarks(state.range()));
    // The records take as much as these.
    const orv::benchmarks::HeapPeak recordsHeap;
    const Records records = makeMarks(state.range());
    const auto recordBytes = static_cast<double>(recordsHeap.bytes());
    for ([[maybe_unused]] const auto iteration : state) {
        std::array<int, 2> ends{};
        LoadCost cost{};
        if (pipe(ends.data()) != 0) {
            std::abort();
        }
        const pid_t child = fork();
        if (child == 0) {
            Factory::registerClass(std::make_unique<Mark>());
            *Enhancements::getOrCreateEnhancementsDb() = Enhancements();
            const orv::benchmarks::HeapPeak heap;
            const auto start = Clock::now();
            EnhancementsFile::readFile();
            cost = {Seconds(Clock::now() - start).count(), static_cast<double>(heap.bytes())};
            const auto loaded =
                static_cast<std::int64_t>(Enhancements::getOrCreateEnhancementsDb()->getRecords().size());
            _exit(loaded == state.range() && write(ends[1], &cost, sizeof cost) == sizeof cost ? 0 : 1);
        }
        close(ends[1]);
        if (read(ends[0], &cost, sizeof cost) != sizeof cost) {
            state.SkipWithError("the load fails");
        }
        close(ends[0]);
        waitpid(child, nullptr, 0);
        state.SetIterationTime(cost.seconds);
        state.counters["heap/document"] =
            (cost.heap - recordBytes) / static_cast<double>(std::filesystem::file_size(path));
    }
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

void eachSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 10000)->UseManualTime();
}

void eachLoad(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 1000)->UseManualTime();
}

/// Its 10,000 rewrites take half a minute.
void longestLoad(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10000)->UseManualTime()->Iterations(1)->Repetitions(1);
}

BENCHMARK(addOurs)->Name("addRecord/ours")->Apply(eachSize);
BENCHMARK(addFloor)->Name("addRecord/floor")->Apply(eachSize);
BENCHMARK(addPugixml)->Name("addRecord/pugixml")->Apply(eachSize);
BENCHMARK(addTinyxml2)->Name("addRecord/tinyxml2")->Apply(eachSize);
BENCHMARK(addLibxml2)->Name("addRecord/libxml2")->Apply(eachSize);
BENCHMARK_CAPTURE(addSqlite, full, "PRAGMA synchronous=FULL")->Name("addRecord/SQLite-FULL")->Apply(eachSize);
BENCHMARK_CAPTURE(addSqlite, normal, "PRAGMA synchronous=NORMAL")->Name("addRecord/SQLite-NORMAL")->Apply(eachSize);
BENCHMARK_CAPTURE(addSqlite, wal, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL")
    ->Name("addRecord/SQLite-WAL-NORMAL")
    ->Apply(eachSize);
BENCHMARK(loadOurs)->Name("load/ours")->Apply(eachLoad);
BENCHMARK(loadFloor)->Name("load/floor")->Apply(eachLoad);
BENCHMARK(loadOurs)->Name("load/ours")->Apply(longestLoad);
BENCHMARK(loadFloor)->Name("load/floor")->Apply(longestLoad);

} // namespace

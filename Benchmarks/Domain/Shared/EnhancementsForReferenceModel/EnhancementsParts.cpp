// What additions and loads can't do without, each alone: the calls of the kinds' operations, and the file part, which
// is to lock the file, to write one record more at its end with a saving note, but without syncs, and to unlock it.

#include "Domain/Shared/EnhancementsForReferenceModel/SampleRecords.h"
#include "Support/TemporaryDirectory.h"
#include "Utilities/Change.h"
#include "Utilities/LockedFile.h"
#include "Utilities/SystemCalls.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>

namespace {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using namespace orv::utilities;

void callKinds(const Records& records, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        auto kind = records[index]->getEntityName();
        auto attributes = records[index]->getAttributes();
        benchmark::DoNotOptimize(kind);
        benchmark::DoNotOptimize(attributes);
    }
}

void addKinds(benchmark::State& state) {
    const Records records = makeMarks(state.range());
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        callKinds(records, records.size());
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}

/// As a load asks them, which stores the records one after the other.
void loadKinds(benchmark::State& state) {
    const Records records = makeMarks(state.range());
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        for (std::size_t count = 1; count <= records.size(); ++count) {
            callKinds(records, count);
        }
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}

Replacement replacing(const std::string& before, const std::string& after) {
    return {Change::between(before, after), before.size(), Digest::of(before), after, Digest::of(after)};
}

void replaceLocked(const std::string& path, const Replacement& replacement) {
    std::error_code error;
    const auto file = LockedFile::tryLock(path, true, LockedFile::Access::ReadWrite, error);
    if (!file || !file->replace(replacement)) {
        std::abort();
    }
}

void addFilePart(benchmark::State& state) {
    constexpr std::size_t aboutOneRecord = 230;
    const orv::tests::TemporaryDirectory directory;
    const std::string path = directory / "store.xml";
    const std::string fewer(aboutOneRecord * static_cast<std::size_t>(state.range()), '-');
    const std::string more = fewer + std::string(aboutOneRecord, '+');
    orv::tests::setContent(path, fewer);
    const auto sync = std::exchange(systemCalls.sync, [](Handle /*file*/) { return done; });
    for ([[maybe_unused]] const auto iteration : state) {
        const auto adding = replacing(fewer, more);
        const auto start = Clock::now();
        replaceLocked(path, adding);
        state.SetIterationTime(Seconds(Clock::now() - start).count());
        replaceLocked(path, replacing(more, fewer));
    }
    systemCalls.sync = sync;
}

BENCHMARK(addKinds)->Name("addRecord/kinds")->Apply(eachSize);
BENCHMARK(addFilePart)->Name("addRecord/file")->Apply(eachSize);
BENCHMARK(loadKinds)->Name("load/kinds")->RangeMultiplier(10)->Range(10, 1000)->UseManualTime();
BENCHMARK(loadKinds)->Name("load/kinds")->Arg(10000)->UseManualTime()->Iterations(1)->Repetitions(1);

} // namespace

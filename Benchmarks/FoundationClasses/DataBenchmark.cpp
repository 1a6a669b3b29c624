// The search of an object by its Guid, in an order that jumps about (findByGuid) and in the order in which the objects
// were made (findInOrder). The floor is a search in the standard's hash table with the same hash, alone.

#include "FoundationClasses/Data.h"
#include "Support/SampleGuids.h"
#include "Support/Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <unordered_map>

namespace orv::fc {

namespace {

std::vector<Guid> guidsOf(const benchmark::State& state) {
    return benchmarks::sampleGuids(static_cast<std::size_t>(state.range(0)));
}

std::vector<Guid> shuffled(std::vector<Guid> guids) {
    std::shuffle(guids.begin(), guids.end(), std::mt19937_64()); // NOLINT(cert-msc32-c, cert-msc51-cpp)
    return guids;
}

std::vector<Guid> asTheyAre(std::vector<Guid> guids) {
    return guids;
}

void findByGuid(benchmark::State& state, std::vector<Guid> order(std::vector<Guid>)) {
    const auto data = std::make_shared<Data>();
    const std::vector<Guid> guids = guidsOf(state);
    for (const Guid& guid : guids) {
        data->entityCreate("IfcWall")->guid = guid;
    }
    data->guidUpdate();
    benchmarks::timeEach(state, order(guids), [&data](const Guid& guid) { return data->findByGuid(guid); });
}

void findInMap(benchmark::State& state, std::vector<Guid> order(std::vector<Guid>)) {
    std::unordered_map<Guid, std::shared_ptr<FcBase>> map;
    Data data;
    const std::vector<Guid> guids = guidsOf(state);
    for (const Guid& guid : guids) {
        map[guid] = data.entityCreate("IfcWall");
    }
    benchmarks::timeEach(state, order(guids), [&map](const Guid& guid) { return map.find(guid)->second; });
}

void eachSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(1000)->Arg(100'000)->Arg(1'000'000);
}

BENCHMARK_CAPTURE(findByGuid, shuffled, shuffled)->Name("findByGuid/ours")->Apply(eachSize);
BENCHMARK_CAPTURE(findInMap, shuffled, shuffled)->Name("findByGuid/floor")->Apply(eachSize);
BENCHMARK_CAPTURE(findByGuid, ordered, asTheyAre)->Name("findInOrder/ours")->Apply(eachSize);
BENCHMARK_CAPTURE(findInMap, ordered, asTheyAre)->Name("findInOrder/floor")->Apply(eachSize);

} // namespace

} // namespace orv::fc

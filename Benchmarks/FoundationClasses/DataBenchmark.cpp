// The search of an object by its Guid, in objects in an order that jumps about. The floor is a search in the same hash
// table with the same hash, alone.

#include "FoundationClasses/Data.h"
#include "Support/SampleGuids.h"
#include "Support/Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace orv::fc {

namespace {

std::vector<Guid> guidsOf(const benchmark::State& state) {
    return benchmarks::sampleGuids(static_cast<std::size_t>(state.range(0)));
}

std::vector<Guid> shuffled(std::vector<Guid> guids) {
    std::shuffle(guids.begin(), guids.end(), std::mt19937_64()); // NOLINT(cert-msc32-c, cert-msc51-cpp)
    return guids;
}

void findByGuid(benchmark::State& state) {
    const auto data = std::make_shared<Data>();
    const std::vector<Guid> guids = guidsOf(state);
    for (const Guid& guid : guids) {
        data->entityCreate("IfcWall")->guid = guid;
    }
    data->guidUpdate();
    benchmarks::timeEach(state, shuffled(guids), [&data](const Guid& guid) { return data->findByGuid(guid); });
}

void findInMap(benchmark::State& state) {
    std::unordered_map<Guid, std::shared_ptr<FcBase>> map;
    Data data;
    const std::vector<Guid> guids = guidsOf(state);
    for (const Guid& guid : guids) {
        map[guid] = data.entityCreate("IfcWall");
    }
    benchmarks::timeEach(state, shuffled(guids), [&map](const Guid& guid) { return map.find(guid)->second; });
}

BENCHMARK(findByGuid)->Name("findByGuid/ours")->Arg(10)->Arg(1000)->Arg(100'000);
BENCHMARK(findInMap)->Name("findByGuid/floor")->Arg(10)->Arg(1000)->Arg(100'000);

} // namespace

} // namespace orv::fc

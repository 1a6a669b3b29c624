// How the property overlay bears large models: the number after a benchmark's name is that of the walls, each with five
// properties. Absolute times depend on the machine; what counts are the ratios and the bytes.
//
// - value_ns: nanoseconds a value, in the median pass. The columns Time and CPU are those of a whole pass.
// - vs_1000: value_ns, or the bytes a wall with its properties, divided by the same at 1,000 walls; left out if the run
//   at 1,000 was. A step that visits all walls for each value gives 10 at 10,000 and 100 at 100,000 walls.
// - left_bytes: live on the heap after the passes and not before. Anything but 0 is a leak, or growth with each write.
// - object_bytes: live on the heap for a shadow object without sets, with its places in the database.
// - property_bytes: live on the heap for a property with its value, and for its fifth of the property set.
//
// OnOneWall stays on one wall, which the processor's caches hold at any size: its vs_1000 is 1 but for the noise, and
// it is the one to watch. All goes through the walls in order, as a host does that loads or saves; it outgrows the
// caches between 1,000 and 100,000 walls, and its vs_1000 is a small number above 1. OnAnyWall jumps from wall to wall
// and misses the caches most; its vs_1000 is about that of getFromPlainMapOnAnyWall, a yardstick, which jumps in the
// same way through a plain map of the same values. The vs_1000 of the bytes is 1 within a twentieth: vectors and the
// index have spare room that depends on where the number of walls falls between two steps of their growth.

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <malloc.h>
#include <map>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

std::size_t liveBytes = 0; // not atomic: the benchmarks run in one thread

} // namespace

// In place of those of the standard library, for the shared libraries as well. The others, but for those of
// over-aligned types, which aren't used here, come down to these. Not inlined, since GCC warns of a mismatch where it
// inlines one of a pair alone.

// NOLINTBEGIN(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = std::malloc(std::max<std::size_t>(size, 1));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    liveBytes += malloc_usable_size(block);
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    liveBytes -= malloc_usable_size(block);
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

// NOLINTEND(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using fc::core::kernel::FcObjectDefinition;

struct Property {
    std::string name;
    object::PropertyValue value;
};

const std::string pset = "Pset_WallCommon";
const Property properties[] = {
    {"Reference", "W-01"}, {"FireRating", "REI 90"}, {"ThermalTransmittance", 0.24},
    {"IsExternal", true},  {"LoadBearing", false},
};

/// A host with a model of walls, and a shadow database that the callbacks give.
class Host {
public:
    explicit Host(std::size_t wallCount) { // NOLINT(cert-msc32-c, cert-msc51-cpp): the same ids in each run
        guids.reserve(wallCount);
        while (guids.size() < wallCount) {
            guids.push_back(addWall());
        }
        model->guidUpdate();
        setCallbacks();
    }

    ~Host() {
        PsetData::getPsetShadowDbReadOnlyCallbackSet({});
        PsetData::getPsetShadowDbReadWriteCallbackSet({});
        PsetData::getObjectFromGuidCallbackSet({});
    }

    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Those of the walls in the order in which they were made.
    const std::vector<Guid>& getGuids() const { return guids; }

    std::vector<Guid> shuffledGuids() {
        std::vector<Guid> shuffled = guids;
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        return shuffled;
    }

    std::size_t valueCount() const { return guids.size() * std::size(properties); }

    void emptyShadowDb() {
        shadowDb.reset(); // first, so that there is never more than one
        shadowDb = std::make_shared<fc::FcShadowDb>();
    }

    void makeShadowObjects() {
        for (const Guid& guid : guids) {
            shadowDb->getShadowObject(*find(guid));
        }
        shadowDb->data().guidUpdate();
    }

private:
    Guid addWall() {
        const auto wall = model->entityCreate("IfcWall");
        const std::uint64_t high = random();
        wall->guid.data1 = static_cast<std::uint32_t>(high >> 32U);
        wall->guid.data2 = static_cast<std::uint16_t>(high >> 16U);
        wall->guid.data3 = static_cast<std::uint16_t>(high);
        std::generate(std::begin(wall->guid.data4), std::end(wall->guid.data4),
                      [this] { return static_cast<std::uint8_t>(random()); });
        return wall->guid;
    }

    std::shared_ptr<const FcObjectDefinition> find(const Guid& guid) const {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(model->findByGuid(guid));
    }

    void setCallbacks() const {
        PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return shadowDb; });
        PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(shadowDb, ScopeGuard()); });
        PsetData::getObjectFromGuidCallbackSet([this](const Guid& guid) { return find(guid); });
    }

    std::mt19937_64 random;
    std::shared_ptr<fc::Data> model = std::make_shared<fc::Data>();
    std::shared_ptr<fc::FcShadowDb> shadowDb = std::make_shared<fc::FcShadowDb>();
    std::vector<Guid> guids;
};

void setAll(const Host& host) {
    PsetData data(false);
    for (const Guid& guid : host.getGuids()) {
        for (const Property& property : properties) {
            data.setValue(guid, pset, property.name, property.value);
        }
    }
}

/// Whether all values are there and of their types.
bool getAll(const Host& host) {
    PsetData data;
    bool found = true;
    for (const Guid& guid : host.getGuids()) {
        for (const Property& property : properties) {
            found &= data.getValue(guid, pset, property.name).getIndex() == property.value.getIndex();
        }
    }
    return found;
}

/// Writes one property of each wall in the list.
void setOneEach(const std::vector<Guid>& guids) {
    PsetData data(false);
    std::size_t next = 0;
    for (const Guid& guid : guids) {
        const Property& property = properties[next++ % std::size(properties)];
        data.setValue(guid, pset, property.name, property.value);
    }
}

/// Reads one property of each wall in the list. Gives whether all are there and of their types.
bool getOneEach(const std::vector<Guid>& guids) {
    PsetData data;
    bool found = true;
    std::size_t next = 0;
    for (const Guid& guid : guids) {
        const Property& property = properties[next++ % std::size(properties)];
        found &= data.getValue(guid, pset, property.name).getIndex() == property.value.getIndex();
    }
    return found;
}

/// The simplest store of the same values.
using PlainMap = std::unordered_map<Guid, std::map<std::string, object::PropertyValue>>;

PlainMap plainMap(const Host& host) {
    PlainMap map;
    for (const Guid& guid : host.getGuids()) {
        for (const Property& property : properties) {
            map[guid][property.name] = property.value;
        }
    }
    return map;
}

bool getOneEach(const PlainMap& map, const std::vector<Guid>& guids) {
    bool found = true;
    std::size_t next = 0;
    for (const Guid& guid : guids) {
        const Property& property = properties[next++ % std::size(properties)];
        const object::PropertyValue value = map.at(guid).at(property.name);
        found &= value.getIndex() == property.value.getIndex();
    }
    return found;
}

/// The wall from the midst of the model, a thousand times.
std::vector<Guid> sameWall(const Host& host) {
    return std::vector<Guid>(1000, host.getGuids()[host.getGuids().size() / 2]);
}

std::size_t wallCount(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Sets the counter vs_1000. The run at 1,000 walls comes first and leaves the figure that the others are divided by.
void compare(benchmark::State& state, const std::string& name, double figure) {
    static std::map<std::string, double> figuresAt1000;
    if (wallCount(state) == 1000) {
        figuresAt1000[name] = figure;
    }
    if (const auto at1000 = figuresAt1000.find(name); at1000 != figuresAt1000.end()) {
        state.counters["vs_1000"] = figure / at1000->second;
    }
}

double median(std::vector<double> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

/// What the passes of a run gave.
struct Passes {
    std::vector<double> seconds;
    std::ptrdiff_t leftBytes = 0;
};

/// Times the passes alone, not what prepares each of them. Prepares once more at the end, which removes what a pass is
/// meant to leave.
template <typename Prepare, typename Pass>
Passes run(benchmark::State& state, const Prepare& prepare, const Pass& pass) {
    Passes passes;
    passes.seconds.reserve(static_cast<std::size_t>(state.max_iterations));
    const std::size_t bytesBefore = liveBytes;
    for ([[maybe_unused]] const auto iteration : state) {
        prepare();
        const auto start = std::chrono::steady_clock::now();
        pass();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
        passes.seconds.push_back(elapsed.count());
    }
    prepare();
    passes.leftBytes = static_cast<std::ptrdiff_t>(liveBytes) - static_cast<std::ptrdiff_t>(bytesBefore);
    return passes;
}

void count(benchmark::State& state, const std::string& name, const Passes& passes, std::size_t valueCount) {
    const double nanoseconds = median(passes.seconds) * 1e9 / static_cast<double>(valueCount);
    state.counters["value_ns"] = nanoseconds;
    state.counters["left_bytes"] = static_cast<double>(passes.leftBytes);
    compare(state, name, nanoseconds);
}

void require(benchmark::State& state, bool found) {
    if (!found) {
        state.SkipWithError("a value that was set isn't found");
    }
}

void setAllOnFreshDatabase(benchmark::State& state) {
    Host host(wallCount(state));
    const auto empty = [&host] { host.emptyShadowDb(); };
    const auto fill = [&host] { setAll(host); };
    count(state, "setAllOnFreshDatabase", run(state, empty, fill), host.valueCount());
    fill();
    require(state, getAll(host));
}

/// Runs the passes on a database that has all the values.
template <typename Pass>
void runOnFullDatabase(benchmark::State& state, const std::string& name, const Host& host, std::size_t valueCount,
                       const Pass& pass) {
    setAll(host);
    const auto nothing = [] {};
    count(state, name, run(state, nothing, pass), valueCount);
    require(state, getAll(host));
}

void getAllFromFullDatabase(benchmark::State& state) {
    const Host host(wallCount(state));
    bool found = true;
    runOnFullDatabase(state, "getAllFromFullDatabase", host, host.valueCount(), [&] { found &= getAll(host); });
    require(state, found);
}

void setPresentOnOneWall(benchmark::State& state) {
    const Host host(wallCount(state));
    const std::vector<Guid> guids = sameWall(host);
    runOnFullDatabase(state, "setPresentOnOneWall", host, guids.size(), [&] { setOneEach(guids); });
}

void getPresentOnOneWall(benchmark::State& state) {
    const Host host(wallCount(state));
    const std::vector<Guid> guids = sameWall(host);
    bool found = true;
    runOnFullDatabase(state, "getPresentOnOneWall", host, guids.size(), [&] { found &= getOneEach(guids); });
    require(state, found);
}

void setPresentOnAnyWall(benchmark::State& state) {
    Host host(wallCount(state));
    const std::vector<Guid> guids = host.shuffledGuids();
    runOnFullDatabase(state, "setPresentOnAnyWall", host, guids.size(), [&] { setOneEach(guids); });
}

void getPresentOnAnyWall(benchmark::State& state) {
    Host host(wallCount(state));
    const std::vector<Guid> guids = host.shuffledGuids();
    bool found = true;
    runOnFullDatabase(state, "getPresentOnAnyWall", host, guids.size(), [&] { found &= getOneEach(guids); });
    require(state, found);
}

void getFromPlainMapOnAnyWall(benchmark::State& state) {
    Host host(wallCount(state));
    const std::vector<Guid> guids = host.shuffledGuids();
    const PlainMap map = plainMap(host);
    bool found = true;
    const auto nothing = [] {};
    const auto read = [&] { found &= getOneEach(map, guids); };
    count(state, "getFromPlainMapOnAnyWall", run(state, nothing, read), guids.size());
    require(state, found);
}

void heap(benchmark::State& state) {
    Host host(wallCount(state));
    const std::size_t before = liveBytes;
    for ([[maybe_unused]] const auto iteration : state) {
        host.makeShadowObjects();
    }
    const std::size_t withObjects = liveBytes;
    setAll(host);
    const std::size_t withProperties = liveBytes;
    const auto walls = static_cast<double>(wallCount(state));
    state.counters["object_bytes"] = static_cast<double>(withObjects - before) / walls;
    state.counters["property_bytes"] =
        static_cast<double>(withProperties - withObjects) / static_cast<double>(host.valueCount());
    compare(state, "heap", static_cast<double>(withProperties - before) / walls);
    require(state, getAll(host));
}

void atEachSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(1000, 100'000);
}

BENCHMARK(setAllOnFreshDatabase)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(getAllFromFullDatabase)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(setPresentOnOneWall)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(getPresentOnOneWall)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(setPresentOnAnyWall)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(getPresentOnAnyWall)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(getFromPlainMapOnAnyWall)->Apply(atEachSize)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(heap)->Apply(atEachSize)->Iterations(1)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace orv::domain::shared::enhancementsforreferencemodel

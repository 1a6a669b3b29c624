// The search of a published definition by its names: for all of them, in an order that jumps about, and for as many
// names that aren't published but look alike. The peers hold the same definitions under the same keys, a pair of the
// names; the hash of the hash table is that of the standard library, on each of the names.

#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orv::ifc {

namespace {

using def::xml::Def;

/// Names of a property set and a property.
struct Names {
    std::string set;
    std::string property;
};

using Key = std::pair<std::string_view, std::string_view>;

struct KeyHash {
    // Not noexcept: so the table keeps the hashes, and is the faster for it.
    std::size_t operator()(const Key& key) const {
        constexpr std::hash<std::string_view> hash;
        return hash(key.first) * 31 + hash(key.second);
    }
};

std::vector<Names> names(const std::string& ending) {
    std::vector<Names> all;
    for (const Def& definition : definitions()) {
        all.push_back({std::string(definition.propertySet), std::string(definition.property) + ending});
    }
    std::shuffle(all.begin(), all.end(), std::mt19937_64()); // NOLINT(cert-msc32-c, cert-msc51-cpp)
    return all;
}

/// Times the search for all published names, or with an ending for as many unknown ones.
template <typename Find>
void timeSearches(benchmark::State& state, const char* ending, const Find& find) {
    const std::vector<Names> all = names(ending);
    for (const Names& wanted : all) {
        if (find(wanted) != findSchemaDefForProperty(wanted.set, wanted.property)) {
            state.SkipWithError("another definition is found");
        }
    }
    benchmarks::timeEach(state, all, find);
}

void findDefinition(benchmark::State& state, const char* ending) {
    timeSearches(state, ending,
                 [](const Names& wanted) { return findSchemaDefForProperty(wanted.set, wanted.property); });
}

void findInHashTable(benchmark::State& state, const char* ending) {
    std::unordered_map<Key, const Def*, KeyHash> table;
    for (const Def& definition : definitions()) {
        table.emplace(Key(definition.propertySet, definition.property), &definition);
    }
    timeSearches(state, ending, [&table](const Names& wanted) -> const Def* {
        const auto found = table.find(Key(wanted.set, wanted.property));
        return found == table.end() ? nullptr : found->second;
    });
}

void findInSortedArray(benchmark::State& state, const char* ending) {
    std::vector<std::pair<Key, const Def*>> array;
    for (const Def& definition : definitions()) {
        array.emplace_back(Key(definition.propertySet, definition.property), &definition);
    }
    std::sort(array.begin(), array.end());
    timeSearches(state, ending, [&array](const Names& wanted) -> const Def* {
        const Key key(wanted.set, wanted.property);
        const auto found = std::lower_bound(array.begin(), array.end(), key,
                                            [](const auto& entry, const Key& sought) { return entry.first < sought; });
        return found != array.end() && found->first == key ? found->second : nullptr;
    });
}

void ofAll(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(static_cast<std::int64_t>(definitions().size()));
}

BENCHMARK_CAPTURE(findDefinition, known, "")->Name("findDefinition/ours")->Apply(ofAll);
BENCHMARK_CAPTURE(findInHashTable, known, "")->Name("findDefinition/unordered_map")->Apply(ofAll);
BENCHMARK_CAPTURE(findInSortedArray, known, "")->Name("findDefinition/sorted array")->Apply(ofAll);
BENCHMARK_CAPTURE(findDefinition, unknown, "x")->Name("findNoDefinition/ours")->Apply(ofAll);
BENCHMARK_CAPTURE(findInHashTable, unknown, "x")->Name("findNoDefinition/unordered_map")->Apply(ofAll);
BENCHMARK_CAPTURE(findInSortedArray, unknown, "x")->Name("findNoDefinition/sorted array")->Apply(ofAll);

} // namespace

} // namespace orv::ifc

#pragma once

#include "Support/AllocationCounter.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::benchmarks {

/// Shows the items a second, and as allocs the allocations for one item.
inline void showCounts(benchmark::State& state, std::size_t itemCount, std::size_t allocations) {
    state.SetItemsProcessed(static_cast<std::int64_t>(itemCount));
    state.counters["allocs"] = static_cast<double>(allocations) / static_cast<double>(itemCount);
}

/// Times the operation on one item after the other, from the first again after the last. What it returns is kept from
/// being optimised away.
template <typename Item, typename Operation>
void timeEach(benchmark::State& state, const std::vector<Item>& items, const Operation& operation) {
    const AllocationCounter counter;
    auto next = items.begin();
    for ([[maybe_unused]] const auto iteration : state) {
        auto result = operation(*next);
        benchmark::DoNotOptimize(result);
        if (++next == items.end()) {
            next = items.begin();
        }
    }
    showCounts(state, static_cast<std::size_t>(state.iterations()), counter.allocations());
}

/// Times the operation on all items at a time, and not what undoes it. For benchmarks that use manual time.
template <typename Item, typename Operation, typename Undo>
void timeAll(benchmark::State& state, const std::vector<Item>& items, const Operation& operation, const Undo& undo) {
    std::size_t allocations = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        const AllocationCounter counter;
        const auto start = std::chrono::steady_clock::now();
        for (const Item& item : items) {
            operation(item);
        }
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        allocations += counter.allocations();
        state.SetIterationTime(elapsed.count());
        for (const Item& item : items) {
            undo(item);
        }
    }
    showCounts(state, static_cast<std::size_t>(state.iterations()) * items.size(), allocations);
}

} // namespace orv::benchmarks

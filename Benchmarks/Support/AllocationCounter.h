#pragma once

#include <cstddef>

namespace orv::benchmarks {

/// Counts the allocations of the process, those of the shared libraries included, from its making on. Linking it
/// replaces operator new. For one thread.
class AllocationCounter {
public:
    AllocationCounter() : countBefore(count) {}

    std::size_t allocations() const { return count - countBefore; }

    static std::size_t count; ///< Since the start of the process.

private:
    std::size_t countBefore;
};

} // namespace orv::benchmarks

#include "Support/AllocationCounter.h"

#include <algorithm>
#include <cstdlib>
#include <new>

std::size_t orv::benchmarks::AllocationCounter::count = 0;

// In place of those of the standard library. The others, but for those of over-aligned types, which aren't used here,
// come down to these. Not inlined, since GCC warns of a mismatch where it inlines one of a pair alone.

// NOLINTBEGIN(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = std::malloc(std::max<std::size_t>(size, 1));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++orv::benchmarks::AllocationCounter::count;
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}
// NOLINTEND(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

// In a file of its own, so that the compiler doesn't see into these where they are called.

#include "Support/FailingAllocation.h"

#include <cstdlib>
#include <new>

// NOLINTBEGIN(*-no-malloc,*-owning-memory)

void* operator new(std::size_t size) {
    void* const memory = orv::tests::allocationsAhead-- == 0 ? nullptr : std::malloc(size);
    return memory == nullptr ? throw std::bad_alloc() : memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

// NOLINTEND(*-no-malloc,*-owning-memory)

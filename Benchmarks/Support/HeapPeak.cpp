#include "Support/HeapPeak.h"

#include <algorithm>
#include <cstddef>
#include <malloc.h>

// The GNU C library's own, under the names by which replacements reach them.
// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)

namespace {

bool isCounting = false;
std::ptrdiff_t live = 0; // beyond those at the beginning
std::ptrdiff_t peak = 0;

std::ptrdiff_t sizeOf(void* block) {
    return static_cast<std::ptrdiff_t>(malloc_usable_size(block));
}

void* counted(void* block) {
    if (isCounting) {
        live += sizeOf(block);
        peak = std::max(peak, live);
    }
    return block;
}

void discount(void* block) {
    if (isCounting) {
        live -= sizeOf(block);
    }
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void* malloc(std::size_t size) {
    return counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    discount(block);
    return counted(__libc_realloc(block, size));
}

void free(void* block) {
    discount(block);
    __libc_free(block);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace orv::benchmarks {

HeapPeak::HeapPeak() {
    live = peak = 0;
    isCounting = true;
}

HeapPeak::~HeapPeak() {
    isCounting = false;
}

std::size_t HeapPeak::bytes() const {
    return static_cast<std::size_t>(peak);
}

std::size_t HeapPeak::bytesNow() const {
    return static_cast<std::size_t>(live);
}

} // namespace orv::benchmarks

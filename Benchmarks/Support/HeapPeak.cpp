#include "Support/HeapPeak.h"

#include <algorithm>
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

std::size_t live = 0;
std::size_t peak = 0;

void* counted(void* block) {
    live += malloc_usable_size(block);
    peak = std::max(peak, live);
    return block;
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
    live -= malloc_usable_size(block);
    return counted(__libc_realloc(block, size));
}

void free(void* block) {
    live -= malloc_usable_size(block);
    __libc_free(block);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace orv::benchmarks {

HeapPeak::HeapPeak() : liveBefore(live) {
    peak = live;
}

std::size_t HeapPeak::bytes() const {
    return peak - liveBefore;
}

} // namespace orv::benchmarks

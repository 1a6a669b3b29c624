#pragma once

#include <cstddef>

namespace orv::benchmarks {

/// The most bytes that the process has on the heap at a time, in C code as well, beyond those at its making. Linking it
/// replaces malloc, which takes longer while there is one. For one thread, and one at a time.
class HeapPeak {
public:
    HeapPeak();
    ~HeapPeak();

    HeapPeak(const HeapPeak&) = delete;
    HeapPeak& operator=(const HeapPeak&) = delete;

    std::size_t bytes() const;

    /// What is there now beyond that.
    std::size_t bytesNow() const;
};

} // namespace orv::benchmarks

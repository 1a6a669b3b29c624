#pragma once

#include <cstddef>

namespace orv::benchmarks {

/// The most bytes that the process has on the heap at a time, in C code as well, beyond those at its making. Linking it
/// replaces malloc. For one thread, and one at a time.
class HeapPeak {
public:
    HeapPeak();

    std::size_t bytes() const;

private:
    std::size_t liveBefore;
};

} // namespace orv::benchmarks

#pragma once

#include <cstddef>
#include <limits>

namespace orv::tests {

/// How many allocations go ahead of one that fails, in a program that links FailingAllocation.cpp.
inline std::size_t allocationsAhead = std::numeric_limits<std::size_t>::max();

} // namespace orv::tests

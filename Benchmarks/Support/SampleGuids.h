#pragma once

#include "Id/Guid.h"

#include <cstddef>
#include <cstring>
#include <random>
#include <vector>

namespace orv::benchmarks {

/// Random ids, the same in each run.
inline std::vector<Guid> sampleGuids(std::size_t count) {
    std::mt19937_64 random; // NOLINT(cert-msc32-c, cert-msc51-cpp)
    std::vector<Guid> guids(count);
    for (Guid& guid : guids) {
        const std::uint64_t halves[] = {random(), random()};
        static_assert(sizeof halves == sizeof guid);
        std::memcpy(&guid, halves, sizeof guid);
    }
    return guids;
}

} // namespace orv::benchmarks

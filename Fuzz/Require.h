#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace orv::fuzz {

using Byte = std::uint8_t;

/// Ends the process, which counts as a failed input, unless the condition holds.
inline void require(bool condition, const char* whatHolds) {
    if (!condition) {
        static_cast<void>(std::fprintf(stderr, "Doesn't hold: %s\n", whatHolds));
        std::abort();
    }
}

} // namespace orv::fuzz

/// What a target defines: tries one input.
extern "C" int LLVMFuzzerTestOneInput(const orv::fuzz::Byte* data, std::size_t size);

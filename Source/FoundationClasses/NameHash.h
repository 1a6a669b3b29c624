#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

namespace orv::fc {

/// Takes a word into a hash.
constexpr std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 32U);
}

/// A hash of a name, for the tables that the compiler builds. It takes eight letters at a time; the last eight may
/// overlap those before them. Letters that differ only in the bits of ignored, which is a mask for eight, count as the
/// same.
constexpr std::uint64_t hashOf(std::string_view name, std::uint64_t ignored = 0) {
    const auto wordAt = [ignored](const char* text) {
        std::array<char, sizeof(std::uint64_t)> letters{};
        std::copy_n(text, letters.size(), letters.begin());
        return std::bit_cast<std::uint64_t>(letters) | ignored;
    };
    std::uint64_t hash = name.size();
    if (name.size() < sizeof(std::uint64_t)) {
        for (const char letter : name) {
            hash = mixed(hash, static_cast<unsigned char>(letter) | ignored);
        }
        return hash;
    }
    const char* const last = name.data() + name.size() - sizeof(std::uint64_t);
    for (const char* letters = name.data(); letters < last; letters += sizeof(std::uint64_t)) {
        hash = mixed(hash, wordAt(letters));
    }
    return mixed(hash, wordAt(last));
}

} // namespace orv::fc

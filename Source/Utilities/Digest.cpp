#include "Utilities/Digest.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace orv::utilities {

namespace {

/// Digests are compared with those that other machines left in a file, so words are little-endian.
std::uint64_t wordAt(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    if constexpr (std::endian::native == std::endian::big) {
        std::uint64_t swapped = 0;
        for (std::size_t byte = 0; byte < sizeof(word); ++byte, word >>= 8U) {
            swapped = (swapped << 8U) | (word & 0xffU);
        }
        return swapped;
    }
    return word;
}

/// Spreads each bit of the value over all others; no two values give the same.
std::uint64_t mixed(std::uint64_t value) {
    value = (value ^ (value >> 32U)) * 0xd6e8feb86659fd93U;
    value = (value ^ (value >> 29U)) * 0xa0761d6478bd642fU;
    return value ^ (value >> 32U);
}

constexpr std::size_t wordSize = sizeof(std::uint64_t);

/// Lanes that don't wait for each other take the content's words in turn. No step loses what a lane holds.
struct Lanes {
    void take(std::size_t lane, std::uint64_t word) {
        values[lane] = std::rotl((values[lane] ^ word) * 0x9fb21c651e98df25U, 31);
    }

    std::array<std::uint64_t, 4> values = {0x243f6a8885a308d3U, 0x13198a2e03707344U, 0xa4093822299f31d0U,
                                           0x082efa98ec4e6c89U};
};

Digest ofBlock(std::string_view content) {
    Lanes lanes;
    constexpr std::size_t stride = wordSize * std::tuple_size_v<decltype(Lanes::values)>;
    const char* at = content.data();
    std::size_t left = content.size();
    for (; left >= stride; at += stride, left -= stride) {
        for (std::size_t lane = 0; lane < lanes.values.size(); ++lane) {
            lanes.take(lane, wordAt(at + lane * wordSize));
        }
    }
    std::array<char, stride> last{};
    if (left != 0) {
        std::memcpy(last.data(), at, left);
    }
    for (std::size_t lane = 0; lane < lanes.values.size(); ++lane) {
        lanes.take(lane, wordAt(last.data() + lane * wordSize));
    }
    Digest digest{mixed(content.size()), mixed(~std::uint64_t{content.size()})};
    for (const std::uint64_t value : lanes.values) {
        digest.first = mixed(digest.first ^ value);
        digest.second = mixed(digest.second + std::rotl(value, 17));
    }
    return digest;
}

constexpr std::size_t blockSize = 4096;

} // namespace

Digest Digest::of(std::string_view content) {
    RunningDigest digest;
    digest.update(content, 0);
    return digest.get();
}

void RunningDigest::update(std::string_view content, std::size_t unchanged) {
    blocks.resize(std::min(blocks.size(), unchanged / blockSize));
    for (std::size_t begin = blocks.size() * blockSize; begin < content.size(); begin += blockSize) {
        blocks.push_back(ofBlock(content.substr(begin, blockSize)));
    }
    digest = {mixed(content.size()), ~content.size()};
    for (const Digest& block : blocks) {
        digest.first = mixed(digest.first ^ block.first);
        digest.second = mixed(digest.second ^ block.second);
    }
}

} // namespace orv::utilities

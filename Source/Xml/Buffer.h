#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace orv::xml {

/// A text in the making, for many short pieces: std::string's own append costs several times as much for each.
class Buffer {
public:
    /// With room for a text of that size; it may get longer.
    explicit Buffer(std::size_t expectedSize = 0) : capacity(expectedSize) {}

    void append(std::string_view piece) {
        if (capacity - size < piece.size()) {
            grow(piece.size());
        }
        copy(piece, room.get() + size);
        size += piece.size();
    }

    /// Takes back the last byte.
    void dropLast() { --size; }

    std::string_view getText() const { return {room.get(), size}; }

private:
    /// Two copies of a fixed size that overlap are quicker than one of any size, and most pieces are short.
    static void copy(std::string_view piece, char* to) {
        constexpr std::size_t word = sizeof(std::uint64_t);
        const std::size_t length = piece.size();
        if (length > 2 * word) {
            std::memcpy(to, piece.data(), length);
        } else if (length >= word) {
            copyEnds<word>(piece, to);
        } else if (length >= word / 2) {
            copyEnds<word / 2>(piece, to);
        } else {
            std::copy(piece.begin(), piece.end(), to);
        }
    }

    template <std::size_t Size>
    static void copyEnds(std::string_view piece, char* to) {
        std::array<char, Size> first{};
        std::array<char, Size> last{};
        std::memcpy(first.data(), piece.data(), Size);
        std::memcpy(last.data(), piece.data() + piece.size() - Size, Size);
        std::memcpy(to, first.data(), Size);
        std::memcpy(to + piece.size() - Size, last.data(), Size);
    }

    void grow(std::size_t needed) {
        capacity = std::max(capacity + capacity / 2, size + needed);
        auto larger = std::make_unique_for_overwrite<char[]>(capacity);
        copy(getText(), larger.get());
        room = std::move(larger);
    }

    std::size_t capacity;
    std::unique_ptr<char[]> room = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t size = 0;
};

} // namespace orv::xml

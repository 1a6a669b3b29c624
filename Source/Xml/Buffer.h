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

/// Copies the piece to where there is room for it and gives the end of the copy. Two copies of a fixed size that
/// overlap are quicker than one of any size, and most pieces are short.
inline char* put(char* to, std::string_view piece) {
    constexpr auto copyEnds = []<typename Word>(char* destination, std::string_view source, Word first) {
        Word last = 0;
        std::memcpy(&first, source.data(), sizeof(Word));
        std::memcpy(&last, source.data() + source.size() - sizeof(Word), sizeof(Word));
        std::memcpy(destination, &first, sizeof(Word));
        std::memcpy(destination + source.size() - sizeof(Word), &last, sizeof(Word));
    };
    if (piece.size() > 2 * sizeof(std::uint64_t)) {
        std::memcpy(to, piece.data(), piece.size());
    } else if (piece.size() >= sizeof(std::uint64_t)) {
        copyEnds(to, piece, std::uint64_t{});
    } else if (piece.size() >= sizeof(std::uint32_t)) {
        copyEnds(to, piece, std::uint32_t{});
    } else {
        std::copy(piece.begin(), piece.end(), to);
    }
    return to + piece.size();
}

inline std::size_t maximumSize(std::string_view piece) {
    return piece.size();
}

/// A text in the making, for many short pieces: std::string's own append costs several times as much for each.
class Buffer {
public:
    /// With room for a text of that size; it may get longer.
    explicit Buffer(std::size_t expectedSize = 0) : capacity(expectedSize) {}

    /// Appends all the pieces, each of a type that has maximumSize and put.
    template <typename... Pieces>
    void append(const Pieces&... pieces) {
        const std::size_t needed = (maximumSize(pieces) + ...);
        if (capacity - size < needed) {
            grow(needed);
        }
        char* end = room.get() + size;
        ((end = put(end, pieces)), ...);
        size = static_cast<std::size_t>(end - room.get());
    }

    /// Takes back the last byte.
    void dropLast() { --size; }

    std::string_view getText() const { return {room.get(), size}; }

private:
    void grow(std::size_t needed) {
        capacity = std::max(capacity + capacity / 2, size + needed);
        auto larger = std::make_unique_for_overwrite<char[]>(capacity);
        put(larger.get(), getText());
        room = std::move(larger);
    }

    std::size_t capacity;
    std::unique_ptr<char[]> room = std::make_unique_for_overwrite<char[]>(capacity);
    std::size_t size = 0;
};

} // namespace orv::xml

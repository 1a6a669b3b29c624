#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace orv::xml {

/// An expected size may be wrong, and must not cost all memory then.
constexpr std::size_t maximumExpectation = std::size_t{1} << 28U;

/// Copies a piece of one to two words.
template <typename Word>
void putEnds(char* to, std::string_view piece) {
    Word first = 0;
    Word last = 0;
    std::memcpy(&first, piece.data(), sizeof(Word));
    std::memcpy(&last, piece.data() + piece.size() - sizeof(Word), sizeof(Word));
    std::memcpy(to, &first, sizeof(Word));
    std::memcpy(to + piece.size() - sizeof(Word), &last, sizeof(Word));
}

/// Copies the piece to where there is room for it and returns the end of the copy. Two copies of a fixed size that
/// overlap are quicker than one of any size, and most pieces are short.
inline char* put(char* to, std::string_view piece) {
    if (piece.size() > 2 * sizeof(std::uint64_t)) {
        std::memcpy(to, piece.data(), piece.size());
    } else if (piece.size() >= sizeof(std::uint64_t)) {
        putEnds<std::uint64_t>(to, piece);
    } else if (piece.size() >= sizeof(std::uint32_t)) {
        putEnds<std::uint32_t>(to, piece);
    } else {
        std::copy(piece.begin(), piece.end(), to);
    }
    return to + piece.size();
}

/// At least the number of bytes that put writes.
inline std::size_t maximumSize(std::string_view piece) {
    return piece.size();
}

/// An append-only text buffer for many short pieces, each of which costs std::string's own append several times as
/// much.
class Buffer {
public:
    /// With room for a text of that size; it may get longer.
    explicit Buffer(std::size_t expectedSize) { grow(std::min(expectedSize, maximumExpectation)); }

    /// Appends all the pieces, each of a type that has maximumSize and put. None may lie in the buffer itself.
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

    /// Takes back what is behind that size.
    void cut(std::size_t smaller) { size = smaller; }

    /// Takes back the last byte.
    void dropLast() { --size; }

    std::string_view getText() const { return {room.get(), size}; }

private:
    void grow(std::size_t needed) {
        const std::size_t larger = std::max(capacity + capacity / 2, size + needed);
        auto newRoom = std::make_unique_for_overwrite<char[]>(larger);
        put(newRoom.get(), getText());
        room = std::move(newRoom);
        capacity = larger;
    }

    std::size_t capacity = 0;
    std::unique_ptr<char[]> room;
    std::size_t size = 0;
};

} // namespace orv::xml

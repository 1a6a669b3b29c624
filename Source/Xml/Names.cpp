#include "Xml/Names.h"

#include <cstring>
#include <stdexcept>

namespace orv::xml {

namespace {

/// Whether texts of the same size, of one to two words, are the same.
template <typename Word>
bool haveSameEnds(std::string_view one, std::string_view other) {
    const auto differenceAt = [&](std::size_t position) {
        Word first = 0;
        Word second = 0;
        std::memcpy(&first, one.data() + position, sizeof(Word));
        std::memcpy(&second, other.data() + position, sizeof(Word));
        return first ^ second;
    };
    return (differenceAt(0) | differenceAt(one.size() - sizeof(Word))) == 0;
}

/// Quicker than the comparison of string_view for short texts whose bytes were only just written: the loads of that
/// don't match the stores and wait for them.
bool isSame(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) {
        return false;
    }
    if (one.size() >= sizeof(std::uint64_t) && one.size() <= 2 * sizeof(std::uint64_t)) {
        return haveSameEnds<std::uint64_t>(one, other);
    }
    if (one.size() >= sizeof(std::uint32_t) && one.size() < sizeof(std::uint64_t)) {
        return haveSameEnds<std::uint32_t>(one, other);
    }
    return one == other;
}

} // namespace

std::uint32_t Names::numberOf(std::string_view text) {
    if (expected == nullptr || !isSame(expected->text, text)) {
        Name& found = findOrAdd(text);
        if (lastFound != nullptr) {
            lastFound->next = &found;
        }
        expected = &found;
    }
    lastFound = expected;
    expected = lastFound->next;
    return lastFound->number;
}

Names::Name& Names::findOrAdd(std::string_view text) {
    if (const auto known = numbers.find(text); known != numbers.end()) {
        return names[known->second];
    }
    constexpr std::size_t maximum = std::size_t{1} << numberBits;
    if (names.size() >= maximum) {
        throw std::length_error("too many XML names");
    }
    const auto number = static_cast<std::uint32_t>(names.size());
    Name& added = names.emplace_back(Name{number, std::string(text)});
    numbers.emplace(added.text, number);
    return added;
}

} // namespace orv::xml

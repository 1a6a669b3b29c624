#include "Xml/Names.h"

#include "Xml/Escape.h"

#include <stdexcept>

namespace orv::xml {

namespace {

/// A text that was put together a moment ago is compared faster byte by byte than as a whole, which has to wait until
/// all of its pieces have been stored.
bool isSame(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) {
        return false;
    }
    for (std::size_t position = 0; position < one.size(); ++position) {
        if (one[position] != other[position]) {
            return false;
        }
    }
    return true;
}

} // namespace

const Names::Name& Names::find(std::string_view text) {
    // Names mostly follow each other as they did before, in one record after another.
    if (expected == nullptr || !isSame(expected->text, text)) {
        Name& found = findOrAdd(text);
        if (last != nullptr) {
            last->next = &found;
        }
        expected = &found;
    }
    last = expected;
    expected = last->next;
    return *last;
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
    const std::string escaped = escapedName(text);
    Name& added = names.emplace_back(Name{number, std::string(text), "<" + escaped + ">", "</" + escaped + ">"});
    numbers.emplace(added.text, number);
    return added;
}

} // namespace orv::xml

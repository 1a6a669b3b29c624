#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orv::xml {

/// The names of elements and processing instructions, each kept once, with its number and its tags.
class Names {
public:
    static constexpr unsigned numberBits = 29;

    struct Name {
        std::uint32_t number;
        std::string text;
        std::string startTag; // as it stands in a saved document, without attributes
        std::string endTag;
        Name* next = nullptr; // the one that followed this one the last time
    };

    Names() = default;
    Names(const Names&) = delete; // the members point into each other
    Names& operator=(Names&&) = default;

    /// The name of that text, which is a new one if there wasn't any. Throws std::length_error when there are too many.
    const Name& find(std::string_view text);

    const Name& operator[](std::uint32_t number) const { return names[number]; }

private:
    Name& findOrAdd(std::string_view text);

    std::deque<Name> names;
    std::unordered_map<std::string_view, std::uint32_t> numbers; // the keys lie in names
    Name* lastFound = nullptr;
    Name* expected = nullptr; // what find looks at first
};

} // namespace orv::xml

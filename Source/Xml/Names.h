#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orv::xml {

/// Numbers names, from 0 and each different one once. Names mostly follow each other as they did before, in one record
/// after another, so each remembers the one that followed it the last time, and numberOf looks at that first.
class Names {
public:
    static constexpr unsigned numberBits = 29;

    Names() = default;
    Names(const Names&) = delete; // the members point into each other
    Names& operator=(const Names&) = delete;

    /// The number of the name, a new one if it hasn't come before. Throws std::length_error if there are too many.
    std::uint32_t numberOf(std::string_view text);

    const std::string& operator[](std::uint32_t number) const { return names[number].text; }

private:
    struct Name {
        std::uint32_t number;
        std::string text;
        Name* next = nullptr;
    };

    Name& findOrAdd(std::string_view text);

    std::deque<Name> names;
    std::unordered_map<std::string_view, std::uint32_t> numbers; // the keys lie in names
    Name* lastFound = nullptr;
    Name* expected = nullptr;
};

} // namespace orv::xml

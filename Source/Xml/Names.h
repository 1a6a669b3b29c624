#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orv::xml {

/// The names of elements and processing instructions, each kept once and known by a number, with its tags.
class Names {
public:
    static constexpr unsigned numberBits = 29;

    struct Name {
        std::string text;
        std::string startTag; // as it stands in a saved document, without attributes
        std::string endTag;
        std::uint32_t next = 0; // the name that was asked for last after this one
    };

    /// The number of the name, which is a new one if there wasn't any. Throws std::length_error when there are too
    /// many.
    std::uint32_t numberOf(std::string_view name);

    const Name& operator[](std::uint32_t number) const { return *names[number]; }

private:
    std::uint32_t findOrAdd(std::string_view name);

    std::vector<std::unique_ptr<Name>> names;
    std::unordered_map<std::string_view, std::uint32_t> numbers; // the keys lie in names
    std::uint32_t last = 0;                                      // that was asked for
};

} // namespace orv::xml

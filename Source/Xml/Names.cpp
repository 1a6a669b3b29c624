#include "Xml/Names.h"

#include "Xml/Escape.h"

#include <stdexcept>

namespace orv::xml {

std::uint32_t Names::numberOf(std::string_view name) {
    // Names mostly follow each other as they did before, in one record after another.
    if (!names.empty() && names[names[last]->next]->text == name) {
        return last = names[last]->next;
    }
    const std::uint32_t number = findOrAdd(name);
    names[last]->next = number;
    return last = number;
}

std::uint32_t Names::findOrAdd(std::string_view name) {
    if (const auto known = numbers.find(name); known != numbers.end()) {
        return known->second;
    }
    constexpr std::size_t maximum = std::size_t{1} << numberBits;
    if (names.size() >= maximum) {
        throw std::length_error("too many XML names");
    }
    const auto number = static_cast<std::uint32_t>(names.size());
    const std::string escaped = escapedName(name);
    names.push_back(std::make_unique<Name>(Name{std::string(name), "<" + escaped + ">", "</" + escaped + ">"}));
    numbers.emplace(names.back()->text, number);
    return number;
}

} // namespace orv::xml

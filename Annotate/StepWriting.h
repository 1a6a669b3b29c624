#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// The text, which is UTF-8, as a string literal of a STEP file (ISO 10303-21), quotes included. A byte that is no
/// UTF-8 is written as the character of ISO 8859-1.
std::string stepString(std::string_view text);

/// The number as a real literal, the shortest that reads back as the same.
std::string stepReal(double number);

/// As in (#1,#2).
std::string stepReferences(const std::vector<std::uint64_t>& ids);

/// The parameters of a statement in the spelling of the file, to be changed one by one.
class StatementParts {
public:
    StatementParts() = default;

    /// Of a text from behind the '(' of well-formed parameters, up to the ')' that closes them.
    explicit StatementParts(std::string_view text);

    /// One that the statement doesn't have is like one that is left out, and stays so.
    const std::string& operator[](std::size_t place) const;
    void set(std::size_t place, std::string text);

    /// With commas between them.
    std::string text() const;

private:
    std::vector<std::string> parts;
};

} // namespace annotate

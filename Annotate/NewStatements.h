#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace annotate {

/// The statements that an export adds behind those of the file.
class NewStatements {
public:
    /// The numbers go on behind the highest of the file. Throws RequestError if that leaves too few.
    explicit NewStatements(std::uint64_t highestId);

    /// Returns the number of the new one.
    std::uint64_t add(std::string_view keyword, std::string_view parameters);

    /// The same, but an equal one that was added by this before does as well.
    std::uint64_t addOnce(std::string_view keyword, const std::string& parameters);

    /// All of them, a line for each.
    const std::string& getText() const { return text; }

private:
    std::uint64_t lastId;
    std::string text;
    std::unordered_map<std::string, std::uint64_t> known; ///< By what stands behind their numbers.
};

/// As in #12=IFCWALL(...);
std::string statementText(std::uint64_t id, std::string_view keyword, std::string_view parameters);

/// A GlobalId as a string literal, the same one for the same content.
std::string globalIdOf(std::string_view content);

} // namespace annotate

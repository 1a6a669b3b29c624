#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orv::fc {

/// A name in a row of a table, nul-terminated, to be used as a std::string_view. It holds its letters themselves: their
/// address would have to be adjusted each time the library is loaded.
class TableName {
public:
    /// A name of at most 46 letters.
    constexpr TableName(std::string_view name) : length(static_cast<std::uint8_t>(name.size())) {
        name.copy(letters, name.size());
    }

    constexpr operator std::string_view() const { return {letters, length}; }

    constexpr const char* data() const { return letters; }

    friend constexpr bool operator==(const TableName& a, std::string_view b) { return std::string_view(a) == b; }

private:
    char letters[47] = {};
    std::uint8_t length;
};

} // namespace orv::fc

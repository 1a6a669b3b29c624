#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// The text with every control character, and every byte that is no UTF-8, as a backslash escape (\n, \r, \t or \xHH
/// for each byte), so that a text is one line and can't steer the terminal. A backslash is doubled.
std::string printable(std::string_view text);

/// Says that an addition is in the file. Throws RequestError if that couldn't be said.
void printStored(const std::filesystem::path& path);

using Row = std::vector<std::string>;

/// Writes the rows to standard output: in a terminal as a table with the header and aligned columns,
/// elsewhere one line a row, with tabs between the columns and no header.
void printTable(const Row& header, const std::vector<Row>& rows);

} // namespace annotate

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// A row of a text of separated values.
struct CsvRow {
    std::size_t line; ///< Where it begins, from 1.
    std::vector<std::string> cells;
};

/// The rows of a text in UTF-8 without NULs, with or without a byte-order mark, with cells between commas, semicolons
/// or tabs, which the first line tells, that may do nothing else, as in "sep=;". Lines end in LF, CRLF or CR; cells may
/// stand in quotation marks, as RFC 4180 has it; blanks around those that don't are left out, and so are rows without
/// any content. What csvLine puts before formulas is taken away. Throws RequestError, with the line, if the text isn't
/// of that form.
std::vector<CsvRow> readCsv(std::string_view text);

/// The cells between commas, as RFC 4180 has it, with the line's end; those that a spreadsheet may take for formulas
/// are shielded from that.
std::string csvLine(const std::vector<std::string>& cells);

} // namespace annotate

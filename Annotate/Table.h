#pragma once

#include "Annotate/Arguments.h"

#include <string>
#include <vector>

namespace annotate {

using Row = std::vector<std::string>;

struct Column {
    std::string name;
    bool isNumber = false; ///< Its texts are numbers, or empty.
};

/// The header of a table with the columns.
Row namesOf(const std::vector<Column>& columns);

/// Whether standard output is a terminal in which somebody reads what is printed as sentences and tables.
bool isForReaders(const Arguments& arguments);

/// Writes the rows to standard output: in a terminal as a table with the header and aligned columns, elsewhere one line
/// a row, with tabs between the columns and no header, both with texts as printable makes them. With --csv as
/// csvLine has it, with a header; with --json as an array of objects, in which what is no UTF-8 is U+FFFD.
void printTable(const Arguments& arguments, const std::vector<Column>& columns, const std::vector<Row>& rows);

} // namespace annotate

#pragma once

#include "Annotate/CsvText.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// What a line of a file tells that is to be imported: a value of a property, or a note.
struct ImportRow {
    std::size_t line = 0; ///< Where it begins, from 1.
    std::string globalId;
    std::string set;
    std::string property;
    std::string value; ///< Empty: it is to be unset.
    std::string unit;
    std::string text;
    std::string priority;
    std::string noteId;
    std::string state;
    std::string author;
    std::string time;
    std::string changedBy;
    std::string changed;
};

/// Why a line can't be imported.
struct RefusedLine {
    std::size_t line;
    std::string reason; ///< A sentence or two.
};

struct ImportRows {
    bool areNotes = false;
    std::vector<ImportRow> rows;
    std::vector<RefusedLine> refused; ///< Lines with other numbers of cells than the header.
    std::vector<std::string> leftOut; ///< The columns that mean nothing here.
};

/// Reads separated values below a header with GlobalId, set, property, value and perhaps unit, author and time, or with
/// GlobalId, text and perhaps the other parts of a note, in any order and any case. Throws RequestError where readCsv
/// does and if the header isn't one.
ImportRows readImportRows(std::string_view text);

} // namespace annotate

#include "Annotate/ImportRows.h"

#include "Annotate/Arguments.h"
#include "Annotate/AsciiCase.h"
#include "Annotate/NearNames.h"
#include "Host/NearestNames.h"

#include <algorithm>
#include <array>
#include <utility>

namespace annotate {

namespace {

using Part = std::string ImportRow::*;

/// A name of a column. A part's first one is that which messages tell.
struct ColumnName {
    std::string_view name;
    Part part;
};

constexpr std::array<ColumnName, 15> columnNames{{{"GlobalId", &ImportRow::globalId},
                                                  {"set", &ImportRow::set},
                                                  {"property set", &ImportRow::set},
                                                  {"pset", &ImportRow::set},
                                                  {"property", &ImportRow::property},
                                                  {"value", &ImportRow::value},
                                                  {"unit", &ImportRow::unit},
                                                  {"text", &ImportRow::text},
                                                  {"priority", &ImportRow::priority},
                                                  {"Note Id", &ImportRow::noteId},
                                                  {"state", &ImportRow::state},
                                                  {"author", &ImportRow::author},
                                                  {"time", &ImportRow::time},
                                                  {"changed by", &ImportRow::changedBy},
                                                  {"changed", &ImportRow::changed}}};

constexpr std::array<Part, 4> partsOfEdits{&ImportRow::globalId, &ImportRow::set, &ImportRow::property,
                                           &ImportRow::value};
constexpr std::array<Part, 2> partsOfNotes{&ImportRow::globalId, &ImportRow::text};

std::string_view nameOf(Part part) {
    return std::find_if(columnNames.begin(), columnNames.end(), [&](const auto& each) { return each.part == part; })
        ->name;
}

/// The parts of the rows, a null one for a column that means nothing.
using Columns = std::vector<Part>;

bool has(const Columns& columns, Part part) {
    return std::find(columns.begin(), columns.end(), part) != columns.end();
}

Columns columnsIn(const CsvRow& header) {
    Columns columns;
    for (const std::string& cell : header.cells) {
        const auto* const found = std::find_if(columnNames.begin(), columnNames.end(), [&](const ColumnName& each) {
            return equalsInAnyCase(each.name, cell);
        });
        columns.push_back(found == columnNames.end() ? nullptr : found->part);
        if (columns.back() != nullptr && std::count(columns.begin(), columns.end(), columns.back()) > 1) {
            throw RequestError("The header has the column " + std::string(nameOf(columns.back())) + " twice.");
        }
    }
    return columns;
}

/// Throws if there is no column of a part.
template <std::size_t count>
void require(const CsvRow& header, const Columns& columns, const std::array<Part, count>& parts) {
    const auto* const missing =
        std::find_if(parts.begin(), parts.end(), [&](Part part) { return !has(columns, part); });
    if (missing != parts.end()) {
        std::vector<std::string_view> others;
        for (std::size_t column = 0; column < columns.size(); ++column) {
            if (columns[column] == nullptr) {
                others.emplace_back(header.cells[column]);
            }
        }
        throw RequestError("The header has no column " + std::string(nameOf(*missing)) +
                           didYouMean(nameOf(*missing), others) +
                           " It takes GlobalId, set, property, value and unit, or GlobalId, text and priority.");
    }
}

/// Whether the rows are notes. Throws if the header doesn't make sense.
bool areNotes(const CsvRow& header, const Columns& columns) {
    const bool hasEdits = has(columns, &ImportRow::set) || has(columns, &ImportRow::property) ||
                          has(columns, &ImportRow::value) || has(columns, &ImportRow::unit);
    if (hasEdits && has(columns, &ImportRow::text)) {
        throw RequestError("The header has columns of properties and of notes. Give them in two files.");
    }
    if (hasEdits) {
        require(header, columns, partsOfEdits);
    } else {
        require(header, columns, partsOfNotes);
    }
    return !hasEdits;
}

/// Throws if a column that means nothing is likely to be meant for the part, which it takes none for otherwise.
void requireNoneMeant(const std::vector<std::string>& leftOut, const Columns& columns, Part part) {
    const auto meant = has(columns, part) ? std::vector<std::string_view>()
                                          : orv::host::nearestNames(nameOf(part), {leftOut.begin(), leftOut.end()});
    if (!meant.empty()) {
        throw RequestError("There is no column " + std::string(meant.front()) + "; did you mean " +
                           std::string(nameOf(part)) + "? Name it so, or take it out.");
    }
}

/// Empty cells at the end, as spreadsheets write them, don't count.
std::size_t cellCount(const CsvRow& row, std::size_t wanted) {
    std::size_t count = row.cells.size();
    while (count > wanted && row.cells[count - 1].empty()) {
        --count;
    }
    return count;
}

} // namespace

ImportRows readImportRows(std::string_view text) {
    std::vector<CsvRow> lines = readCsv(text);
    if (lines.empty()) {
        throw RequestError("The file has no header. It takes GlobalId, set, property, value and unit, or GlobalId, "
                           "text and priority.");
    }
    const Columns columns = columnsIn(lines.front());
    ImportRows read;
    read.areNotes = areNotes(lines.front(), columns);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (columns[column] == nullptr && !lines.front().cells[column].empty()) {
            read.leftOut.push_back(lines.front().cells[column]);
        }
    }
    requireNoneMeant(read.leftOut, columns, read.areNotes ? &ImportRow::priority : &ImportRow::unit);
    for (auto line = lines.begin() + 1; line != lines.end(); ++line) {
        if (const std::size_t count = cellCount(*line, columns.size()); count != columns.size()) {
            read.refused.push_back({line->line, "It has " + std::to_string(count) + " cells, where the header has " +
                                                    std::to_string(columns.size()) +
                                                    ". A cell with a separator in it stands in quotation marks."});
            continue;
        }
        ImportRow& row = read.rows.emplace_back();
        row.line = line->line;
        for (std::size_t column = 0; column < columns.size(); ++column) {
            if (columns[column] != nullptr) {
                row.*columns[column] = std::move(line->cells[column]);
            }
        }
    }
    return read;
}

} // namespace annotate

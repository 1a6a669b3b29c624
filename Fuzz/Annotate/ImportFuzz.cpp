// Any bytes are rows of separated values or throw a RequestError; what was read is read again from what is written of
// it.

#include "Annotate/Arguments.h"
#include "Annotate/ImportRows.h"
#include "Annotate/ItemText.h"
#include "Require.h"
#include "Xml/Utf8.h"

#include <string>

using namespace orv;

namespace {

void requireUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = xml::decodeUtf8(text).length;
        fuzz::require(length > 0, "cells are UTF-8");
        text.remove_prefix(length);
    }
}

std::string written(const std::vector<annotate::CsvRow>& rows) {
    std::string text = "\xEF\xBB\xBFsep=,\n"; // a second mark or separator would belong to the first cell
    for (const annotate::CsvRow& row : rows) {
        text += annotate::csvLine(row.cells);
    }
    return text;
}

void requireRows(std::string_view text) {
    const std::vector<annotate::CsvRow> rows = annotate::readCsv(text);
    std::size_t line = 0;
    for (const annotate::CsvRow& row : rows) {
        fuzz::require(row.line > line, "rows begin in lines of their own");
        line = row.line;
        for (const std::string& cell : row.cells) {
            requireUtf8(cell);
        }
    }
    const std::vector<annotate::CsvRow> again = annotate::readCsv(written(rows));
    fuzz::require(again.size() == rows.size(), "as many rows are read again");
    for (std::size_t number = 0; number < rows.size(); ++number) {
        fuzz::require(again[number].cells == rows[number].cells, "cells are read again");
    }
}

/// As itemsText makes them of texts.
void requireItems(const std::string& text) {
    const std::vector<std::string> items = annotate::itemsIn(text);
    fuzz::require(annotate::itemsIn(annotate::itemsText({items.begin(), items.end()}, false)) == items,
                  "items are read again");
    if (const auto rows = annotate::rowItemsIn(text)) {
        fuzz::require(annotate::rowItemsIn(annotate::itemsText({rows->begin(), rows->end()}, true)) == rows,
                      "rows are read again");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::string text(data, data + size);
    try {
        requireRows(text);
        const annotate::ImportRows read = annotate::readImportRows(text);
        for (const annotate::ImportRow& row : read.rows) {
            fuzz::require(row.line > 1, "the header is no row");
            requireItems(row.value);
            fuzz::require(!read.areNotes || (row.set.empty() && row.value.empty()), "a note has no value");
        }
    } catch (const annotate::RequestError& error) {
        fuzz::require(std::string_view(error.what()).ends_with('.'), "a refusal is in sentences");
    }
    return 0;
}

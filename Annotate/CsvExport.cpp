#include "Annotate/Additions.h"
#include "Annotate/CsvText.h"
#include "Annotate/EditTable.h"
#include "Annotate/Exports.h"
#include "Annotate/Filter.h"
#include "Annotate/Terminal.h"
#include "Annotate/Utf8Text.h"
#include "Host/TimeText.h"

#include <algorithm>

namespace annotate {

namespace {

constexpr std::string_view markOfUtf8 = "\xEF\xBB\xBF"; // by which spreadsheets know UTF-8

/// To the last digit, so that an import stores the same.
std::string timeText(const std::optional<Time>& time) {
    return time ? orv::host::textOf(*time) : "";
}

/// In an order that doesn't depend on who stored what first.
std::vector<Row> editRows(const Additions& additions) {
    std::vector<Row> rows;
    rows.reserve(additions.getEdits().size());
    for (const AddedEdit& added : additions.getEdits()) {
        rows.push_back(editRow(added.property, added.object, additions.getDetails().getUnits(),
                               timeText(timeOf(added.entry->edit))));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<Row> noteRows(const Additions& additions) {
    std::vector<AddedNote> notes = additions.getNotes();
    std::stable_sort(notes.begin(), notes.end(),
                     [](const AddedNote& a, const AddedNote& b) { return a.number < b.number; });
    std::vector<Row> rows;
    rows.reserve(notes.size());
    for (const auto& [number, note, object, storey] : notes) {
        rows.push_back({idOf(number, *note).toString(true), note->ownerId.toString(false), classOf(object),
                        nameOf(object), std::to_string(note->priority), note->resolved ? "resolved" : "open",
                        note->author, timeText(note->made), note->changedBy, timeText(note->changed), note->text});
    }
    return rows;
}

/// Returns the number of cells in which something was replaced.
std::size_t write(NewFile& file, const Row& header, std::vector<Row> rows) {
    std::size_t replaced = 0;
    file.write(markOfUtf8);
    file.write(csvLine(header));
    for (Row& row : rows) {
        for (std::string& cell : row) {
            std::string text = textInUtf8(cell);
            replaced += text == cell ? 0 : 1;
            cell = std::move(text);
        }
        file.write(csvLine(row));
    }
    return replaced;
}

void addReplaced(ExportOutcome& outcome, std::size_t count) {
    if (count > 0) {
        outcome.remarks.push_back("What isn't UTF-8, or is a NUL, is U+FFFD there, in " + countOf(count, "cell") + '.');
    }
}

} // namespace

ExportOutcome exportCsv(const Arguments& arguments, NewFile& file) {
    const Additions additions(arguments);
    const std::size_t notes = additions.getNotes().size();
    const std::size_t edits = additions.getEdits().size();
    ExportOutcome outcome{arguments.file.string() + " has " +
                              (arguments.onlyNotes ? countOf(notes, "note") : countOf(edits, "edit")) + '.',
                          {}};
    if (arguments.onlyNotes) {
        addReplaced(outcome, write(file,
                                   {"Note Id", "GlobalId", "Class", "Name", "Priority", "State", "Author", "Time",
                                    "Changed by", "Changed", "Text"},
                                   noteRows(additions)));
        return outcome;
    }
    addReplaced(outcome, write(file, namesOf(editColumns()), editRows(additions)));
    if (notes > 0) {
        outcome.remarks.push_back(countOf(notes, "note") + (notes == 1 ? " isn't" : " aren't") +
                                  " there. With --notes they are exported to a file of their own.");
    }
    return outcome;
}

} // namespace annotate

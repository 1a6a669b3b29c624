#include "Annotate/EditTable.h"
#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/ReportSections.h"
#include "Annotate/ValueText.h"

#include <algorithm>

namespace annotate {

namespace {

struct Listing {
    std::string_view id;   ///< Of its section and its style.
    std::string_view name; ///< In the midst of a sentence.
    std::string_view title;
    std::string_view caption;
    std::vector<Column> columns;
};

/// A section with the listing, or with a sentence if nothing is in it.
void beginSection(HtmlPage& page, const Listing& listing, bool isEmpty) {
    page << R"(<section id=")" << listing.id << R"("><h2>)" << listing.title << "</h2>\n";
    if (isEmpty) {
        page << "<p>There are no " << listing.name << ".</p></section>\n";
        return;
    }
    page << R"(<div class="scrolled" role="region" tabindex="0" aria-label=")" << listing.title << "\">\n"
         << R"(<table class="listing )" << listing.id << R"(" id=")" << listing.id << R"(-table" data-name=")"
         << listing.name << R"("><caption>)" << listing.caption << "</caption>\n<thead><tr>";
    for (const Column& column : listing.columns) {
        page << (column.isNumber ? R"(<th scope="col" class="number">)" : R"(<th scope="col">)") << column.name
             << "</th>";
    }
    page << "</tr></thead>\n<tbody>\n";
}

template <typename All, typename AddRow>
void addSection(HtmlPage& page, const Listing& listing, const All& all, const AddRow& addRowOf) {
    beginSection(page, listing, all.empty());
    std::for_each(all.begin(), all.end(), addRowOf);
    if (!all.empty()) {
        page << "</tbody></table></div></section>\n";
    }
}

void addCell(HtmlPage& page, std::string_view text, std::string_view style = {}) {
    page << "<td";
    if (!style.empty()) {
        page << R"( class=")" << style << R"(")";
    }
    (page << ">").text(text) << "</td>";
}

std::string storeyCell(const ModelObject* object, const ModelObject* storey) {
    return object == nullptr || storey == nullptr ? "" : storeyName(storey);
}

void addObject(HtmlPage& page, const ModelObject* object, const orv::Guid& id, const ModelObject* storey) {
    addCell(page, classOf(object));
    addCell(page, nameOf(object));
    addCell(page, id.toString(false), "id");
    addCell(page, storeyCell(object, storey));
}

/// Date and time with a blank between them, where a narrow column can be broken.
std::string timeCell(const std::optional<Time>& time) {
    std::string text = shownTime(time);
    std::replace(text.begin(), text.end(), 'T', ' ');
    return text.substr(0, text.find('Z'));
}

std::string_view shown(Standing standing) {
    switch (standing) {
    case Standing::Differs:
        return "differs";
    case Standing::New:
        return "new";
    case Standing::CaughtUp:
        return "model has it";
    default:
        return "object gone";
    }
}

void addRow(HtmlPage& page, const AddedEdit& added, const ModelUnits& units) {
    const orv::host::PropertyEdit& edit = added.entry->edit;
    const ModelProperty* const model = added.property.model;
    const Standing standing = standingOf(added, units);
    page << "<tr>";
    addObject(page, added.object, added.entry->id, added.storey);
    addCell(page, edit.set);
    addCell(page, edit.property);
    addCell(page, model == nullptr ? "" : withUnit(valuesText(*model), unitText(*model)));
    addCell(page, withUnit(editText(edit), unitOf(added.property, units)), "value");
    addCell(page, shown(standing), standing == Standing::CaughtUp ? "state settled" : "state");
    addCell(page, edit.author);
    addCell(page, timeCell(timeOf(edit)), "time");
    page << "</tr>\n";
}

void addRow(HtmlPage& page, const AddedNote& added) {
    const Note& note = *added.note;
    page << "<tr>";
    addCell(page, std::to_string(added.number), "number");
    addCell(page, note.text);
    addCell(page, std::to_string(note.priority), "number");
    addCell(page, note.resolved ? "resolved" : "open", note.resolved ? "state settled" : "state");
    addCell(page, note.author);
    addCell(page, timeCell(note.made), "time");
    addObject(page, added.object, note.ownerId, added.storey);
    page << "</tr>\n";
}

} // namespace

void addEdits(HtmlPage& page, const Additions& additions) {
    const Listing listing = {"edits",
                             "property edits",
                             "Property edits",
                             "The model’s values beside those that were set. Times are in UTC.",
                             {{"Class"},
                              {"Name"},
                              {"GlobalId"},
                              {"Storey"},
                              {"Property set"},
                              {"Property"},
                              {"Model’s value"},
                              {"New value"},
                              {"Compared"},
                              {"Author"},
                              {"Time"}}};
    addSection(page, listing, additions.getEdits(),
               [&](const AddedEdit& added) { addRow(page, added, additions.getDetails().getUnits()); });
}

void addNotes(HtmlPage& page, const Additions& additions) {
    const Listing listing = {"notes",
                             "notes",
                             "Notes",
                             "Open notes, and then resolved ones. Times are in UTC.",
                             {{"Number", true},
                              {"Text"},
                              {"Priority", true},
                              {"State"},
                              {"Author"},
                              {"Time"},
                              {"Class"},
                              {"Name"},
                              {"GlobalId"},
                              {"Storey"}}};
    std::vector<AddedNote> notes = additions.getNotes();
    std::stable_sort(notes.begin(), notes.end(), [](const AddedNote& a, const AddedNote& b) {
        return std::pair(a.note->resolved, a.number) < std::pair(b.note->resolved, b.number);
    });
    addSection(page, listing, notes, [&](const AddedNote& added) { addRow(page, added); });
}

void addVanished(HtmlPage& page, const Status& status) {
    const Listing listing = {"vanished",
                             "vanished objects",
                             "Vanished objects",
                             "Objects that the model no longer has, and how much is on them.",
                             {{"GlobalId"}, {"Notes", true}, {"Edits", true}}};
    addSection(page, listing, status.vanishedRows(), [&](const Row& row) {
        page << "<tr>";
        addCell(page, row[0], "id");
        addCell(page, row[1], "number");
        addCell(page, row[2], "number");
        page << "</tr>\n";
    });
}

} // namespace annotate

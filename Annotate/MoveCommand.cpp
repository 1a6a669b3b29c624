#include "Annotate/CommandChanges.h"
#include "Annotate/Commands.h"
#include "Annotate/EarlierEdit.h"
#include "Annotate/EditIndex.h"
#include "Annotate/EditText.h"
#include "Annotate/Model.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Notes.h"
#include "Annotate/Terminal.h"

#include <algorithm>

namespace annotate {

using orv::host::ObjectEdit;
using orv::host::PropertyEdit;
using orv::host::PropertyEdits;
using Form = PropertyEdit::Form;

namespace {

bool isSet(const EditIndex::Entry* entry) {
    return entry != nullptr && entry->edit.form != Form::Unset;
}

bool isSame(const PropertyEdit& a, const PropertyEdit& b) {
    return a.form == b.form && editText(a) == editText(b) && a.unit == b.unit;
}

/// A move of what users did from one object to another.
class Move {
public:
    Move(const Arguments& arguments, const orv::Guid& oldId, const orv::Guid& newId)
        : from(oldId),
          to(newId),
          author(authorOf(arguments)),
          store(storePath(arguments)),
          notebook(store),
          edits(Store::getRecords()) {
        for (const EditIndex::Entry* const entry : edits.of(from)) {
            if (isSet(entry)) {
                moved.push_back(*entry);
            }
        }
        std::copy_if(notebook.getNotes().begin(), notebook.getNotes().end(), std::back_inserter(notes),
                     [this](const Note* note) { return note->ownerId == from; });
    }

    /// Throws RequestError if there is nothing to be moved, or an edit would take the place of another value.
    void require() const {
        if (moved.empty() && notes.empty()) {
            throw RequestError("There are no notes and edits on " + from.toString(false) +
                               ". The commands notes and edits list those that there are, with --vanished those on "
                               "objects that the model no longer has.");
        }
        std::string others;
        for (const EditIndex::Entry& entry : moved) {
            const EditIndex::Entry* const present = edits.find(to, entry.edit.set, entry.edit.property);
            if (isSet(present) && !isSame(present->edit, entry.edit)) {
                others.append(others.empty() ? "" : ", ").append(entry.edit.set).append(".");
                others.append(entry.edit.property).append(" (").append(editText(present->edit)).append(", and ");
                others.append(editText(entry.edit)).append(" would come)");
            }
        }
        if (!others.empty()) {
            throw RequestError(to.toString(false) + " has edits of its own: " + others +
                               ". Unset those on the one object or on the other. Nothing was moved.");
        }
    }

    /// Does it, with one rewrite of the store.
    void write(const std::string& command) {
        CommandChanges changes(store, author, command);
        for (Note* const note : notes) {
            changes.change(*note, [&] {
                note->ownerId = to;
                note->changedBy = author;
                note->changed = now();
            });
        }
        for (const EditIndex::Entry& entry : moved) {
            arrive(changes, entry);
            leave(changes, entry);
        }
        changes.write();
    }

    std::string describe() const {
        std::string text = notes.empty() ? "" : countOf(notes.size(), "note");
        text += notes.empty() || moved.empty() ? "" : " and ";
        text += moved.empty() ? "" : countOf(moved.size(), "edit");
        return text + (notes.size() + moved.size() == 1 ? " is" : " are") + " moved to " + to.toString(false) + '.';
    }

private:
    /// The other object gets the edit, by whoever made it, unless it has the same.
    void arrive(CommandChanges& changes, const EditIndex::Entry& entry) {
        const EditIndex::Entry* const present = edits.find(to, entry.edit.set, entry.edit.property);
        if (isSet(present)) {
            return;
        }
        ObjectEdit arriving{to, entry.edit};
        const std::string line = present == nullptr ? "" : present->line;
        if (present != nullptr) {
            arriving.edit.time = std::max(arriving.edit.time, present->edit.time + std::chrono::milliseconds(1));
        }
        changes.replace(line, arriving);
        edits.replaceLine(store, to, line, lineOf(arriving.edit));
    }

    /// The edit goes, with the older ones that it took the place of. Those of an annotate before 0.2 stay, and a later
    /// one unsets them.
    void leave(CommandChanges& changes, const EditIndex::Entry& entry) {
        for (PropertyEdits* const record : allOf<PropertyEdits>(Store::getRecords())) {
            if (record->ownerId == from) {
                std::erase_if(record->lines, [&entry](const std::string& line) {
                    const auto edit = orv::host::editOf(line);
                    return edit && edit->set == entry.edit.set && edit->property == entry.edit.property;
                });
            }
        }
        if (!hasEarlier(entry)) {
            return changes.remove(entry.line, from);
        }
        ObjectEdit unset{from, {}};
        unset.edit.set = entry.edit.set;
        unset.edit.property = entry.edit.property;
        unset.edit.form = Form::Unset;
        unset.edit.author = author;
        unset.edit.time = std::max(now(), entry.edit.time + std::chrono::milliseconds(1));
        changes.replace(entry.line, unset);
        edits.replaceLine(store, from, "", lineOf(unset.edit));
    }

    bool hasEarlier(const EditIndex::Entry& entry) const {
        const auto all = allOf<const EarlierEdit>(Store::getRecords());
        return std::any_of(all.begin(), all.end(), [&](const EarlierEdit* earlier) {
            return earlier->ownerId == from && earlier->propertySet == entry.edit.set &&
                   earlier->property == entry.edit.property;
        });
    }

    orv::Guid from;
    orv::Guid to;
    std::string author;
    Store store;
    Notebook notebook;
    EditIndex edits;
    std::vector<EditIndex::Entry> moved;
    std::vector<Note*> notes;
};

} // namespace

void moveObject(const Arguments& arguments) {
    const Model model = Model::read(arguments.model);
    const orv::Guid from =
        isInstanceNumber(arguments.oldId) ? idNamed(arguments, model, arguments.oldId) : idOf(arguments.oldId);
    const orv::Guid to = idNamed(arguments, model, arguments.globalId);
    if (from == to) {
        throw RequestError("OLD and NEW are the same object.");
    }
    requireNamedStore(arguments);
    Move move(arguments, from, to);
    move.require();
    move.write(arguments.command);
    printStored(move.describe());
}

} // namespace annotate

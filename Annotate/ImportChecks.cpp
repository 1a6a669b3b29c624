#include "Annotate/ImportChecks.h"

#include "Annotate/EditRemarks.h"
#include "Annotate/EditText.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Notes.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/Utf8Text.h"
#include "Host/TimeText.h"

#include <utility>

namespace annotate {

using orv::host::ObjectEdit;
using orv::host::Outcome;
using Form = orv::host::PropertyEdit::Form;

namespace {

/// Nothing if it is empty. Throws RequestError if it isn't a time.
std::optional<Time> toldTime(const std::string& text) {
    Time time;
    if (text.empty()) {
        return std::nullopt;
    }
    if (!orv::host::take(text, time)) {
        throw RequestError("\"" + text + "\" isn't a time like 2026-03-31T12:00:00Z.");
    }
    return time;
}

std::string authorIn(const std::string& text) {
    if (hasControlCharacter(text)) {
        throw RequestError("The author's name, \"" + text + "\", has a control character in it.");
    }
    return text;
}

bool isResolvedIn(const std::string& text) {
    if (text != "resolved" && text != "open" && !text.empty()) {
        throw RequestError("The state \"" + text + "\" is neither open nor resolved.");
    }
    return text == "resolved";
}

/// Without an object that has none of the model's.
Note noteIn(const ImportRow& row) {
    Note note;
    static_cast<void>(note.ownerId.boSet(row.globalId));
    requireText(row.text);
    note.text = row.text;
    if (!row.priority.empty() && !orv::host::take(row.priority, note.priority)) {
        throw RequestError("The priority \"" + row.priority +
                           "\" isn't a whole number from -2147483648 to 2147483647.");
    }
    if (orv::Guid id; id.boSet(row.noteId)) {
        note.id = id;
    } else if (!row.noteId.empty()) {
        throw RequestError("\"" + row.noteId + "\" isn't the id of a note. Leave the cell empty for a new one.");
    }
    note.resolved = isResolvedIn(row.state);
    if (note.made = toldTime(row.time); note.made) {
        note.author = authorIn(row.author);
    }
    if (note.changed = toldTime(row.changed); note.changed) {
        note.changedBy = authorIn(row.changedBy);
    }
    return note;
}

std::tuple<std::string, std::string, int> contentOf(const Note& note) {
    return {note.ownerId.toString(false), note.text, note.priority};
}

} // namespace

std::optional<ObjectEdit> EditChecks::check(const ImportRow& row) {
    if (const EditIndex::Entry* const stored = storedAs(row)) {
        requireFirst(row, stored->id);
        return std::nullopt;
    }
    const orv::Guid id = idNamed(arguments, model, row.globalId);
    const Definition& definition = definitionOf(row);
    ObjectEdit made{id, editIn(definition, row.value)};
    if (made.edit.form != Form::Unset) {
        made.edit.unit = takeUnits(definition, units, row.unit, made.edit.values);
    }
    const Outcome outcome = overlay.getEdits().check(id, made.edit);
    if (!outcome) {
        throw RequestError(explain(definition, outcome));
    }
    requireFirst(row, id);
    if (isPresent(made)) {
        return std::nullopt;
    }
    remark(row, remarksOn(definition, outcome, made.edit));
    if (const auto time = toldTime(row.time)) {
        made.edit.author = authorIn(row.author);
        made.edit.time = *time;
    }
    return made;
}

const Definition& EditChecks::definitionOf(const ImportRow& row) {
    auto [known, isNew] = definitions.try_emplace({row.set, row.property});
    auto& [definition, refusal] = known->second;
    if (isNew) {
        try {
            definition = &findDefinition(row.set, row.property);
        } catch (const RequestError& error) {
            refusal = error.what();
        }
    }
    if (definition == nullptr) {
        throw RequestError(refusal);
    }
    return *definition;
}

void EditChecks::requireFirst(const ImportRow& row, const orv::Guid& id) {
    const auto [known, isNew] =
        linesOfProperties.try_emplace(id.toString(false) + row.set + '.' + row.property, row.line);
    if (!isNew) {
        throw RequestError(row.set + '.' + row.property + " of " + row.globalId + " is in line " +
                           std::to_string(known->second) + " already.");
    }
}

void EditChecks::remark(const ImportRow& row, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        if (arguments.strict) {
            throw RequestError(text);
        }
        LinesRemarked& lines = remarks[text];
        lines.first = lines.count == 0 ? row.line : lines.first;
        ++lines.count;
    }
}

const EditIndex::Entry* EditChecks::storedAs(const ImportRow& row) const {
    orv::Guid id;
    const EditIndex::Entry* const entry = id.boSet(row.globalId) ? present.find(id, row.set, row.property) : nullptr;
    const bool isSame = entry != nullptr && entry->edit.form != Form::Unset && entry->edit.unit == row.unit &&
                        textInUtf8(editText(entry->edit)) == row.value;
    return isSame ? entry : nullptr;
}

bool EditChecks::isPresent(const ObjectEdit& made) const {
    const EditIndex::Entry* const entry = present.find(made.id, made.edit.set, made.edit.property);
    if (entry == nullptr) {
        return made.edit.form == Form::Unset;
    }
    return entry->edit.form == made.edit.form && editText(entry->edit) == editText(made.edit) &&
           (made.edit.unit.empty() || made.edit.unit == entry->edit.unit);
}

NoteChecks::NoteChecks(const Arguments& usersArguments, const Model& usersModel, const Notebook& presentNotes)
    : arguments(usersArguments), model(usersModel) {
    for (Note* const note : presentNotes.getNotes()) {
        ofIds.emplace(note->id->toString(true), note);
        texts.insert(contentOf(*note));
    }
}

std::optional<ImportedNote> NoteChecks::check(const ImportRow& row) {
    Note note = noteIn(row);
    const auto known = note.id ? ofIds.find(note.id->toString(true)) : ofIds.end();
    Note* const present = known == ofIds.end() ? nullptr : known->second;
    if (known != ofIds.end() && present == nullptr) {
        throw RequestError("The note " + row.noteId + " is in an earlier line already.");
    }
    if (present != nullptr && row.state.empty()) {
        note.resolved = present->resolved;
    }
    if (present != nullptr && row.priority.empty()) {
        note.priority = present->priority;
    }
    if (!note.id && texts.contains(contentOf(note))) {
        return std::nullopt;
    }
    if (present != nullptr && textInUtf8(present->text) == note.text) {
        note.text = present->text;
    }
    if (present != nullptr && contentOf(*present) == contentOf(note) && present->resolved == note.resolved) {
        known->second = nullptr;
        return std::nullopt;
    }
    note.ownerId = idNamed(arguments, model, row.globalId);
    if (present != nullptr && present->ownerId != note.ownerId) {
        throw RequestError("The note " + row.noteId + " is on " + present->ownerId.toString(false) +
                           ". The command move carries notes to another object.");
    }
    if (note.id) {
        ofIds[note.id->toString(true)] = nullptr;
    } else if (!texts.insert(contentOf(note)).second) {
        return std::nullopt;
    }
    return ImportedNote{present, std::move(note)};
}

} // namespace annotate

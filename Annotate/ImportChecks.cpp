#include "Annotate/ImportChecks.h"

#include "Annotate/EditRemarks.h"
#include "Annotate/EditText.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Notes.h"
#include "Annotate/UnitEntry.h"

namespace annotate {

using orv::host::ObjectEdit;
using orv::host::Outcome;
using Form = orv::host::PropertyEdit::Form;

std::optional<ObjectEdit> EditChecks::check(const ImportRow& row) {
    const orv::Guid id = objectOf(row, arguments, model);
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

bool EditChecks::isPresent(const ObjectEdit& made) const {
    const EditIndex::Entry* const entry = present.find(made.id, made.edit.set, made.edit.property);
    if (entry == nullptr) {
        return made.edit.form == Form::Unset;
    }
    return entry->edit.form == made.edit.form && editText(entry->edit) == editText(made.edit) &&
           (made.edit.unit.empty() || made.edit.unit == entry->edit.unit);
}

orv::Guid objectOf(const ImportRow& row, const Arguments& arguments, const Model& model) {
    return idNamed(arguments, model, row.globalId);
}

Note noteIn(const ImportRow& row, const Arguments& arguments, const Model& model) {
    Note note;
    note.ownerId = objectOf(row, arguments, model);
    note.text = row.text;
    requireText(row.text);
    if (!row.priority.empty() && !orv::host::take(row.priority, note.priority)) {
        throw RequestError("The priority \"" + row.priority + "\" isn't a whole number.");
    }
    return note;
}

} // namespace annotate

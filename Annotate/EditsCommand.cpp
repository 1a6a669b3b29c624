#include "Annotate/Commands.h"
#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/SetsOfObjects.h"
#include "Annotate/Table.h"

namespace annotate {

using Form = orv::host::PropertyEdit::Form;

namespace {

/// What the model has of the property of the edit; empty if it doesn't have the object or the property.
std::string modelsText(SetsOfObjects& sets, const ModelObject* object, const EditIndex::Entry& entry) {
    const ModelProperty* const property =
        object == nullptr ? nullptr : sets.find(*object, &entry, entry.edit.set, entry.edit.property).model;
    return property == nullptr ? "" : valuesText(*property);
}

} // namespace

void listEdits(const Arguments& arguments) {
    Filter filter(arguments);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Records records = readStore(arguments);
    filter.consult(details, records);
    const EditIndex index(records);
    SetsOfObjects sets(details);
    std::vector<Row> rows;
    for (const EditIndex::Entry& entry : index.getEntries()) {
        const ModelObject* const object = details.getModel().find(entry.id);
        const std::optional<Time> time =
            entry.edit.time == Time() ? std::nullopt : std::optional<Time>(entry.edit.time);
        if (entry.edit.form != Form::Unset && filter.takesOwner(entry.id, object) &&
            filter.takesAct(entry.edit.author, time)) {
            rows.push_back({entry.id.toString(false), classOf(object), nameOf(object), entry.edit.set,
                            entry.edit.property, modelsText(sets, object, entry), editText(entry.edit), entry.edit.unit,
                            entry.edit.author, shownTime(time)});
        }
    }
    printTable(arguments,
               {{"GlobalId"},
                {"Class"},
                {"Name"},
                {"Property set"},
                {"Property"},
                {"Model"},
                {"Value"},
                {"Unit"},
                {"Author"},
                {"Time"}},
               rows);
}

} // namespace annotate

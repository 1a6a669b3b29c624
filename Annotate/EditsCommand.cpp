#include "Annotate/Commands.h"
#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/MergedValues.h"
#include "Annotate/Table.h"

#include <unordered_map>

namespace annotate {

using Form = orv::host::PropertyEdit::Form;

namespace {

/// The sets of objects, read when an object is asked for first.
class SetsOfObjects {
public:
    explicit SetsOfObjects(const ModelDetails& modelDetails) : details(modelDetails) {}

    /// What the model has of the property of an object; empty if that is null or has none.
    std::string textOf(const ModelObject* object, const EditIndex::Entry& entry) {
        if (object == nullptr) {
            return "";
        }
        auto [known, isNew] = sets.try_emplace(object);
        if (isNew) {
            known->second = details.setsOf(*object);
        }
        const ModelProperty* const property =
            mergedProperty(known->second, {&entry}, entry.edit.set, entry.edit.property).model;
        return property == nullptr ? "" : valuesText(*property);
    }

private:
    const ModelDetails& details;
    std::unordered_map<const ModelObject*, std::vector<ModelSet>> sets;
};

} // namespace

void listEdits(const Arguments& arguments) {
    const Filter filter(arguments);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Records records = readStore(arguments);
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
                            entry.edit.property, sets.textOf(object, entry), editText(entry.edit), entry.edit.unit,
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

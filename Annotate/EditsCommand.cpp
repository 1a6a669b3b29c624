#include "Annotate/Commands.h"
#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/NamedObject.h"
#include "Annotate/SetsOfObjects.h"
#include "Annotate/Table.h"
#include "Annotate/Terminal.h"
#include "Annotate/ValueText.h"

#include <iostream>
#include <set>

namespace annotate {

using Form = orv::host::PropertyEdit::Form;

namespace {

/// With its unit where that isn't the one of the edit, which has a column.
std::string modelText(const MergedProperty& property, const ModelUnits& units) {
    if (property.model == nullptr) {
        return "";
    }
    const std::string text = valuesText(*property.model);
    return unitBesideModel(property, units).empty() ? text : withUnit(text, unitText(*property.model));
}

} // namespace

void listEdits(const Arguments& arguments) {
    Filter filter(arguments);
    const ModelDetails details = ModelDetails::read(arguments.model);
    filter.findOwner(arguments, details.getModel());
    const Records records = readStore(arguments);
    filter.consult(details, records);
    const EditIndex index(records);
    SetsOfObjects sets(details);
    std::vector<Row> rows;
    std::set<std::string> remarks;
    for (const EditIndex::Entry& entry : index.getEntries()) {
        const ModelObject* const object = details.getModel().find(entry.id);
        const std::optional<Time> time =
            entry.edit.time == Time() ? std::nullopt : std::optional<Time>(entry.edit.time);
        if (entry.edit.form != Form::Unset && filter.takesOwner(entry.id, object) &&
            filter.takesAct(entry.edit.author, time)) {
            const MergedProperty property = sets.find(object, entry);
            remarks.insert(changedUnit(property, details.getUnits()));
            rows.push_back({entry.id.toString(false), classOf(object), nameOf(object), entry.edit.set,
                            entry.edit.property, modelText(property, details.getUnits()), editText(entry.edit),
                            entry.edit.unit, entry.edit.author, shownTime(time)});
        }
    }
    if (!arguments.globalId.empty() && rows.empty()) {
        objectNamed(arguments, details.getModel(), arguments.globalId); // throws if there is none
    }
    printRemarks(filter, rows.empty());
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
    remarks.erase("");
    for (const std::string& remark : remarks) {
        std::cerr << "annotate: " << printable(remark) << '\n';
    }
}

} // namespace annotate

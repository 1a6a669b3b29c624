#include "Annotate/EditTable.h"

#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/ValueText.h"

namespace annotate {

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

std::vector<Column> editColumns() {
    return {{"GlobalId"}, {"Class"}, {"Name"}, {"Property set"}, {"Property"},
            {"Model"},    {"Value"}, {"Unit"}, {"Author"},       {"Time"}};
}

Row editRow(const MergedProperty& property, const ModelObject* object, const ModelUnits& units,
            const std::string& shownTime) {
    const orv::host::PropertyEdit& edit = property.edit->edit;
    return {property.edit->id.toString(false), classOf(object), nameOf(object), edit.set,    edit.property,
            modelText(property, units),        editText(edit),  edit.unit,      edit.author, shownTime};
}

std::optional<Time> timeOf(const orv::host::PropertyEdit& edit) {
    return edit.time == Time() ? std::nullopt : std::optional<Time>(edit.time);
}

} // namespace annotate

#include "Annotate/Additions.h"
#include "Annotate/AdditionsJson.h"
#include "Annotate/Definitions.h"
#include "Annotate/EditTable.h"
#include "Annotate/EditText.h"
#include "Annotate/Exports.h"
#include "Annotate/Terminal.h"
#include "Annotate/ValueText.h"

namespace annotate {

namespace {

Json jsonOf(const AddedEdit& added) {
    const orv::host::PropertyEdit& edit = added.entry->edit;
    const ModelProperty* const model = added.property.model;
    return {{"object", objectJson(added.entry->id.toString(false), added.object)},
            {"propertySet", edit.set},
            {"property", edit.property},
            {"kind", kindName(kindOf(edit))},
            {"value", valueJson(edit)},
            {"unit", orNull(edit.unit)},
            {"model", model == nullptr ? Json() : Json(withUnit(valuesText(*model), unitText(*model)))},
            {"author", orNull(edit.author)},
            {"time", orNull(timeOf(edit))}};
}

Json jsonOf(const AddedNote& added) {
    return noteJson(added.number, *added.note, added.object);
}

template <typename Added>
Json jsonOf(const std::vector<Added>& all) {
    Json array = Json::array();
    for (const Added& added : all) {
        array.push_back(jsonOf(added));
    }
    return array;
}

} // namespace

ExportOutcome exportJson(const Arguments& arguments, NewFile& file) {
    const Additions additions(arguments);
    const Json json{{"model", arguments.model.filename().string()},
                    {"edits", jsonOf(additions.getEdits())},
                    {"notes", jsonOf(additions.getNotes())}};
    file.write(jsonText(json));
    return {arguments.file.string() + " has " + countOf(additions.getNotes().size(), "note") + " and " +
                countOf(additions.getEdits().size(), "edit") + '.',
            {}};
}

} // namespace annotate

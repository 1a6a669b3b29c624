#include "Annotate/Additions.h"
#include "Annotate/EditTable.h"
#include "Annotate/Exports.h"
#include "Annotate/Terminal.h"
#include "Annotate/ValueText.h"
#include "FoundationClasses/IfcClass.h"
#include "Host/TimeText.h"

#include <nlohmann/json.hpp>

namespace annotate {

using Json = nlohmann::ordered_json;
using Form = orv::host::PropertyEdit::Form;
using orv::host::PropertyEdit;
using orv::object::PropertyValue;

namespace {

/// What isn't known is null.
Json orNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json orNull(const std::optional<Time>& time) {
    return time ? Json(orv::host::textOf(*time)) : Json();
}

struct ValueJson {
    Json operator()(std::monostate /*none*/) const { return {}; }
    Json operator()(orv::object::Logical value) const { return valueText(value); }
    template <typename T>
    Json operator()(const std::optional<T>& value) const {
        return value ? (*this)(*value) : Json();
    }
    template <typename T>
    Json operator()(const T& value) const {
        return value;
    }
};

Json jsonOf(const PropertyValue& value) {
    return value.visit(ValueJson());
}

/// One value; all of an enumeration or a list; the bounds by their names; or the rows of a table, each a pair.
Json valueOf(const PropertyEdit& edit) {
    const std::vector<PropertyValue>& values = edit.values;
    if (edit.form == Form::Single) {
        return jsonOf(values.front());
    }
    if (edit.form == Form::Bounded) {
        return {{"lower", jsonOf(values[0])}, {"upper", jsonOf(values[1])}, {"setPoint", jsonOf(values[2])}};
    }
    Json all = Json::array();
    const std::size_t step = edit.form == Form::Table ? 2 : 1;
    for (std::size_t place = 0; place + step <= values.size(); place += step) {
        all.push_back(step == 1 ? jsonOf(values[place])
                                : Json::array({jsonOf(values[place]), jsonOf(values[place + 1])}));
    }
    return all;
}

std::string_view kindOf(Form form) {
    switch (form) {
    case Form::Enumerated:
        return "enumerated";
    case Form::Bounded:
        return "bounded";
    case Form::List:
        return "list";
    case Form::Table:
        return "table";
    default:
        return "single";
    }
}

Json objectJson(const orv::Guid& id, const ModelObject* object) {
    Json json{{"globalId", id.toString(false)}, {"class", nullptr}, {"name", nullptr}};
    if (object != nullptr) {
        json["class"] = object->ifcClass->name;
        json["name"] = object->name;
    }
    return json;
}

Json jsonOf(const AddedEdit& added) {
    const PropertyEdit& edit = added.entry->edit;
    const ModelProperty* const model = added.property.model;
    return {{"object", objectJson(added.entry->id, added.object)},
            {"propertySet", edit.set},
            {"property", edit.property},
            {"kind", kindOf(edit.form)},
            {"value", valueOf(edit)},
            {"unit", orNull(edit.unit)},
            {"model", model == nullptr ? Json() : Json(withUnit(valuesText(*model), unitText(*model)))},
            {"author", orNull(edit.author)},
            {"time", orNull(timeOf(edit))}};
}

Json jsonOf(const AddedNote& added) {
    const Note& note = *added.note;
    return {{"number", added.number},
            {"id", idOf(added.number, note).toString(true)},
            {"object", objectJson(note.ownerId, added.object)},
            {"text", note.text},
            {"priority", note.priority},
            {"resolved", note.resolved},
            {"author", orNull(note.author)},
            {"time", orNull(note.made)},
            {"changedBy", orNull(note.changedBy)},
            {"changed", orNull(note.changed)}};
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
    file.write(json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
    return {arguments.file.string() + " has " + countOf(additions.getNotes().size(), "note") + " and " +
                countOf(additions.getEdits().size(), "edit") + '.',
            {}};
}

} // namespace annotate

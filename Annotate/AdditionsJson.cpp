#include "Annotate/AdditionsJson.h"

#include "Annotate/EditText.h"
#include "Annotate/ValueText.h"
#include "FoundationClasses/IfcClass.h"
#include "Host/TimeText.h"

namespace annotate {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;

namespace {

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

} // namespace

Json orNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json orNull(const std::optional<Time>& time) {
    return time ? Json(orv::host::textOf(*time)) : Json();
}

Json valueJson(PropertyKind kind, const std::vector<PropertyValue>& values) {
    const auto at = [&values](std::size_t place) { return place < values.size() ? jsonOf(values[place]) : Json(); };
    switch (kind) {
    case PropertyKind::Bounded:
        return {{"lower", at(1)}, {"upper", at(0)}, {"setPoint", at(2)}};
    case PropertyKind::Enumerated:
    case PropertyKind::List:
    case PropertyKind::Table:
        break;
    default:
        return at(0);
    }
    Json all = Json::array();
    const std::size_t step = kind == PropertyKind::Table ? 2 : 1;
    for (std::size_t place = 0; place + step <= values.size(); place += step) {
        all.push_back(step == 1 ? at(place) : Json::array({at(place), at(place + 1)}));
    }
    return all;
}

Json valueJson(const orv::host::PropertyEdit& edit) {
    return valueJson(kindOf(edit), valuesInOrder(edit));
}

Json objectJson(const std::string& globalId, const ModelObject* object) {
    Json json{{"globalId", globalId}, {"class", nullptr}, {"name", nullptr}};
    if (object != nullptr) {
        json["class"] = object->ifcClass->name;
        json["name"] = object->name;
    }
    return json;
}

Json noteJson(std::int64_t number, const Note& note, const ModelObject* object) {
    return {{"number", number},
            {"id", idOf(number, note).toString(true)},
            {"object", objectJson(note.ownerId.toString(false), object)},
            {"text", note.text},
            {"priority", note.priority},
            {"resolved", note.resolved},
            {"author", orNull(note.author)},
            {"time", orNull(note.made)},
            {"changedBy", orNull(note.changedBy)},
            {"changed", orNull(note.changed)}};
}

std::string jsonText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace annotate

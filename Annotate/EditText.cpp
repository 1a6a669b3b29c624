#include "Annotate/EditText.h"

#include "Annotate/ValueText.h"

#include <algorithm>
#include <utility>

namespace annotate {

using orv::host::PropertyEdit;
using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;
using Form = PropertyEdit::Form;

namespace {

std::vector<std::string> partsOf(std::string_view text) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        parts.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

std::vector<PropertyValue> rowsIn(const Definition& definition, const std::string& text) {
    std::vector<PropertyValue> values;
    for (const std::string& row : partsOf(text)) {
        const std::size_t equals = row.find('=');
        if (equals == std::string::npos) {
            throw RequestError(fullName(definition) + " is a table, which takes rows: DEFINING=DEFINED;...");
        }
        values.insert(values.end(), {row.substr(0, equals), row.substr(equals + 1)});
    }
    return values;
}

} // namespace

std::vector<PropertyValue> boundsIn(const Definition& definition, std::string_view text) {
    const std::vector<std::string> parts = partsOf(text);
    if (parts.size() > 3) {
        throw RequestError(fullName(definition) + " takes three parts at most: UPPER;LOWER;SET POINT.");
    }
    std::vector<PropertyValue> bounds(3);
    std::transform(parts.begin(), parts.end(), bounds.begin(),
                   [](const std::string& part) { return part.empty() ? PropertyValue() : PropertyValue(part); });
    std::swap(bounds[0], bounds[1]);
    return bounds;
}

PropertyEdit editIn(const Definition& definition, const std::string& text) {
    PropertyEdit edit;
    edit.set = definition.propertySet;
    edit.property = definition.property;
    if (text.empty()) {
        edit.form = Form::Unset;
        return edit;
    }
    switch (definition.kind) {
    case PropertyKind::Bounded:
        edit.form = Form::Bounded;
        edit.values = boundsIn(definition, text);
        break;
    case PropertyKind::List: {
        const std::vector<std::string> parts = partsOf(text);
        edit.form = Form::List;
        edit.values.assign(parts.begin(), parts.end());
        break;
    }
    case PropertyKind::Table:
        edit.form = Form::Table;
        edit.values = rowsIn(definition, text);
        break;
    default: // a kind that takes no value is refused with the check
        edit.values = {text};
    }
    return edit;
}

std::vector<PropertyValue> valuesInOrder(const PropertyEdit& edit) {
    std::vector<PropertyValue> values = edit.values;
    if (edit.form == Form::Bounded) {
        std::swap(values[0], values[1]);
    }
    return values;
}

std::string editText(const PropertyEdit& edit) {
    const std::vector<PropertyValue> values = valuesInOrder(edit);
    std::string text;
    for (std::size_t place = 0; place < values.size(); ++place) {
        const bool isDefined = edit.form == Form::Table && place % 2 == 1;
        text += place == 0 ? "" : isDefined ? "=" : ";";
        text += valueText(values[place]);
    }
    return text;
}

} // namespace annotate

#include "Annotate/EditText.h"

#include "Annotate/ItemText.h"
#include "Annotate/ValueText.h"

#include <algorithm>
#include <utility>

namespace annotate {

using orv::host::PropertyEdit;
using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;
using Form = PropertyEdit::Form;

namespace {

std::vector<PropertyValue> valuesIn(const std::vector<std::string>& items) {
    return {items.begin(), items.end()};
}

/// A semicolon behind the last choice is none.
std::vector<PropertyValue> choicesIn(const Definition& definition, const std::string& text) {
    std::vector<std::string> choices = itemsIn(text);
    if (choices.size() > 1 && choices.back().empty()) {
        choices.pop_back();
    }
    for (const std::string& choice : choices) {
        if (choice.find(';') != std::string::npos) {
            throw RequestError(fullName(definition) + " takes values without semicolons, like A;B. \"" + choice +
                               "\" has one.");
        }
    }
    return valuesIn(choices);
}

std::vector<PropertyValue> rowsIn(const Definition& definition, const std::string& text) {
    const auto items = rowItemsIn(text);
    if (!items) {
        throw RequestError(fullName(definition) + " is a table, which takes rows: DEFINING=DEFINED;...");
    }
    return valuesIn(*items);
}

} // namespace

std::vector<PropertyValue> boundsIn(const Definition& definition, std::string_view text) {
    const std::vector<std::string> parts = itemsIn(text);
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
    case PropertyKind::Enumerated:
        edit.form = Form::Enumerated;
        edit.values = choicesIn(definition, text);
        break;
    case PropertyKind::List:
        edit.form = Form::List;
        edit.values = valuesIn(itemsIn(text));
        break;
    case PropertyKind::Table:
        edit.form = Form::Table;
        edit.values = rowsIn(definition, text);
        break;
    default: // a kind that takes no value is refused with the check
        edit.values = {text};
    }
    return edit;
}

PropertyKind kindOf(const PropertyEdit& edit) {
    switch (edit.form) {
    case Form::Enumerated:
        return PropertyKind::Enumerated;
    case Form::Bounded:
        return PropertyKind::Bounded;
    case Form::List:
        return PropertyKind::List;
    case Form::Table:
        return PropertyKind::Table;
    default:
        return PropertyKind::Single;
    }
}

std::vector<PropertyValue> valuesInOrder(const PropertyEdit& edit) {
    std::vector<PropertyValue> values = edit.values;
    if (edit.form == Form::Bounded) {
        std::swap(values[0], values[1]);
    }
    return values;
}

std::string editText(const PropertyEdit& edit) {
    return edit.form == Form::Single ? valueText(edit.values.front())
                                     : itemsText(valuesInOrder(edit), edit.form == Form::Table);
}

} // namespace annotate

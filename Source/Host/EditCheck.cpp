#include "Host/EditCheck.h"

#include "FoundationClasses/FcValue.h"
#include "Host/EditLine.h"
#include "Host/NearestNames.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <utility>

namespace orv::host {

using fc::FcValue;
using fc::FcValueType;
using ifc::def::xml::Def;
using ifc::def::xml::PropertyKind;
using object::PropertyValue;
using Form = PropertyEdit::Form;
using Result = Outcome::Result;

namespace {

std::string neededType(const Def& definition) {
    std::string type(definition.valueType.empty() ? "any" : definition.valueType);
    switch (definition.kind) {
    case PropertyKind::Bounded:
        return "bounds of " + type;
    case PropertyKind::List:
        return "list of " + type;
    case PropertyKind::Table:
        return "table of " + type + " to " +
               std::string(definition.definedValueType.empty() ? "any" : definition.definedValueType);
    default:
        return type;
    }
}

/// The texts between the semicolons; what follows the last one is one of them if it isn't empty.
std::vector<PropertyValue> split(std::string_view text) {
    std::vector<PropertyValue> parts;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(';'), text.size());
        parts.emplace_back(std::string(text.substr(0, length)));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return parts;
}

/// Converts the value to what a value of the type holds of it; returns whether the type takes it.
bool convert(PropertyValue& value, const FcValueType* type) {
    if (value.getIf<std::string>() != nullptr && type != nullptr && type->content == fc::FcContent::Text) {
        return true; // as it is, without copies
    }
    FcValue held(type);
    held.updateValueFromPropertyValue(value);
    const bool isTaken = held.hasContent();
    value = held.getAsPropertyValue();
    return isTaken;
}

const std::string* textIn(const PropertyValue& value) {
    return value.getIf<std::string>();
}

bool hasSemicolon(const PropertyValue& value) {
    return textIn(value) != nullptr && textIn(value)->find(';') != std::string::npos;
}

bool fitEnumerated(PropertyEdit& edit) {
    if (edit.form == Form::Single && textIn(edit.values.front()) != nullptr) {
        edit.values = split(std::string(*textIn(edit.values.front())));
    } else if (edit.form != Form::List && edit.form != Form::Enumerated) {
        return false;
    }
    edit.form = Form::Enumerated;
    return !edit.values.empty() && std::all_of(edit.values.begin(), edit.values.end(), [](const PropertyValue& value) {
        return textIn(value) != nullptr && !textIn(value)->empty() && !hasSemicolon(value);
    });
}

bool fitBounded(PropertyEdit& edit, const FcValueType* type) {
    bool hasBound = false;
    for (PropertyValue& bound : edit.values) {
        if (!bound.isEmpty()) {
            hasBound = true;
            // The overlay is given the bounds as a text with semicolons between them.
            if (!convert(bound, type) || hasSemicolon(bound)) {
                return false;
            }
        }
    }
    return edit.form == Form::Bounded && hasBound;
}

bool fitTable(PropertyEdit& edit, const FcValueType* definingType, const FcValueType* definedType) {
    bool isTaken = edit.form == Form::Table;
    for (std::size_t number = 0; isTaken && number < edit.values.size(); ++number) {
        isTaken = convert(edit.values[number], number % 2 == 0 ? definingType : definedType);
    }
    return isTaken;
}

bool fit(PropertyEdit& edit, const Def& definition) {
    if (!hasValuesOfItsForm(edit)) {
        return false;
    }
    if (definition.kind == PropertyKind::Enumerated) {
        return fitEnumerated(edit);
    }
    const auto* const type = FcValueType::find(definition.valueType);
    switch (definition.kind) {
    case PropertyKind::Single:
        return edit.form == Form::Single && convert(edit.values.front(), type) &&
               (textIn(edit.values.front()) == nullptr || !textIn(edit.values.front())->empty());
    case PropertyKind::Bounded:
        return fitBounded(edit, type);
    case PropertyKind::List:
        return edit.form == Form::List && !edit.values.empty() &&
               std::all_of(edit.values.begin(), edit.values.end(),
                           [type](PropertyValue& value) { return convert(value, type); });
    case PropertyKind::Table:
        return fitTable(edit, type, FcValueType::find(definition.definedValueType));
    default:
        return false;
    }
}

bool isOutside(const PropertyEdit& edit, const Def& definition) {
    const std::vector<PropertyValue> choices = split(definition.enumerationValues);
    return !choices.empty() && std::any_of(edit.values.begin(), edit.values.end(), [&](const PropertyValue& value) {
        return std::none_of(choices.begin(), choices.end(),
                            [&value](const PropertyValue& choice) { return *textIn(choice) == *textIn(value); });
    });
}

} // namespace

Outcome unknown(const PropertyEdit& edit) {
    std::vector<std::string_view> sets;
    std::vector<std::string_view> properties;
    const auto take = [&](const Def& definition) {
        if (sets.empty() || sets.back() != definition.propertySet) {
            sets.push_back(definition.propertySet);
        }
        if (definition.propertySet == edit.set) {
            properties.push_back(definition.property);
        }
    };
    for (const Def& definition : ifc::definitions()) {
        take(definition);
    }
    for (const Def* const definition : ifc::addedDefinitions()) {
        take(*definition);
    }
    Outcome outcome;
    outcome.result = properties.empty() ? Result::NoSuchSet : Result::NoSuchProperty;
    outcome.nearestNames = properties.empty() ? nearestNames(edit.set, sets) : nearestNames(edit.property, properties);
    std::sort(outcome.nearestNames.begin(), outcome.nearestNames.end());
    outcome.nearestNames.erase(std::unique(outcome.nearestNames.begin(), outcome.nearestNames.end()),
                               outcome.nearestNames.end());
    return outcome;
}

Outcome check(const Def& definition, PropertyEdit& edit) {
    Outcome outcome;
    if (definition.kind == PropertyKind::Reference || definition.kind == PropertyKind::Complex) {
        outcome.result = Result::TakesNoValue;
    } else if (!fit(edit, definition)) {
        outcome.result = Result::ValueRefused;
        outcome.neededType = neededType(definition);
    } else {
        outcome.isOutsideEnumeration = definition.kind == PropertyKind::Enumerated && isOutside(edit, definition);
    }
    return outcome;
}

} // namespace orv::host

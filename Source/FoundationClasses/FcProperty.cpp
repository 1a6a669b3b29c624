#include "FoundationClasses/FcProperty.h"

#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"

#include <utility>

namespace orv::fc {

std::optional<std::string> FcProperty::getAttributeAsString(const std::string& attribute) const {
    return attribute == "Name" ? std::optional(name) : std::nullopt;
}

void FcProperty::deleteProperty(Data& /*data*/, bool /*keepEntity*/) {
    // The set may hold the last reference to this object.
    if (const auto owner = std::exchange(set, {}).lock()) {
        std::erase_if(owner->properties, [this](const auto& property) { return property.get() == this; });
    }
}

// The first virtual operation of each class is defined here, so that its vtable is in this library alone.

std::uint32_t FcPropertyWithoutValue::kindNumber() const {
    return classNumber;
}

std::uint32_t FcPropertySingleValue::kindNumber() const {
    return classNumber;
}

std::uint32_t FcPropertyBoundedValue::kindNumber() const {
    return classNumber;
}

std::uint32_t FcPropertyEnumeratedValue::kindNumber() const {
    return classNumber;
}

std::uint32_t FcPropertyListValue::kindNumber() const {
    return classNumber;
}

std::uint32_t FcPropertyTableValue::kindNumber() const {
    return classNumber;
}

bool FcPropertySingleValue::setFromPropertyValue(const object::PropertyValue& value) {
    nominalValue.updateValueFromPropertyValue(value);
    return nominalValue.hasContent();
}

std::optional<std::string> FcPropertyEnumeratedValue::getAttributeAsString(const std::string& attribute) const {
    if (attribute != "EnumerationValues") {
        return FcProperty::getAttributeAsString(attribute);
    }
    if (!enumerationValues) {
        return std::nullopt;
    }
    std::string text = "(";
    for (const FcValue& value : *enumerationValues) {
        if (&value != &enumerationValues->front()) {
            text += ';';
        }
        text += value.getAsString(false).value_or("");
    }
    return text + ')';
}

} // namespace orv::fc

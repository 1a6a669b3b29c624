#include "FoundationClasses/FcBase.h"
#include "FoundationClasses/FcObjectDefinition.h"
#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"

#include <algorithm>

namespace orv::fc {

namespace {

const IfcClass& presentClass(std::uint32_t kindNumber) {
    return *IfcClass::ofNumber(kindNumber);
}

} // namespace

std::optional<std::string> FcBase::getAttributeAsString(const std::string& /*attribute*/) const {
    return std::nullopt;
}

std::optional<std::string> FcProperty::getAttributeAsString(const std::string& attribute) const {
    return attribute == "Name" ? std::optional(name) : std::nullopt;
}

void FcProperty::deleteProperty(Data& /*data*/, bool /*keepEntity*/) {
    if (const auto owner = set.lock()) {
        std::erase_if(owner->properties, [this](const auto& property) { return property.get() == this; });
        set.reset();
    }
}

FcPropertySingleValue::FcPropertySingleValue() : FcProperty(presentClass(classNumber)) {}

bool FcPropertySingleValue::setFromPropertyValue(const object::PropertyValue& value) {
    return nominalValue.updateValueFromPropertyValue(value);
}

FcPropertyEnumeratedValue::FcPropertyEnumeratedValue() : FcProperty(presentClass(classNumber)) {}

std::optional<std::string> FcPropertyEnumeratedValue::getAttributeAsString(const std::string& attribute) const {
    if (attribute != "EnumerationValues") {
        return FcProperty::getAttributeAsString(attribute);
    }
    if (!enumerationValues) {
        return std::nullopt;
    }
    std::string text = "(";
    for (const FcValue& value : *enumerationValues) {
        if (text.size() > 1) {
            text += ';';
        }
        text += value.getAsString(false).value_or("");
    }
    return text + ')';
}

FcPropertyBoundedValue::FcPropertyBoundedValue() : FcProperty(presentClass(classNumber)) {}

FcPropertyListValue::FcPropertyListValue() : FcProperty(presentClass(classNumber)) {}

FcPropertyTableValue::FcPropertyTableValue() : FcProperty(presentClass(classNumber)) {}

namespace core::kernel {

std::optional<std::string> FcObjectDefinition::getAttributeAsString(const std::string& attribute) const {
    return attribute == "GlobalId" ? std::optional(guid.toString(false)) : std::nullopt;
}

FcPropertySet::FcPropertySet() : FcPropertySetDefinition(presentClass(classNumber)) {}

std::shared_ptr<FcProperty> FcPropertySet::findProperty(const std::string& wanted) const {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&wanted](const auto& property) { return property->name == wanted; });
    return found == properties.end() ? nullptr : *found;
}

void FcPropertySet::addProperty(const std::shared_ptr<FcProperty>& property) {
    properties.push_back(property);
    property->set = weak_from_this();
}

} // namespace core::kernel

} // namespace orv::fc

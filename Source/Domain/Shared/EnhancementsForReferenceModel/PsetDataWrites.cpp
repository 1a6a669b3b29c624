#include "Assert/Assert.h"
#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <cmath>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

using fc::FcProperty;
using fc::FcPropertyBoundedValue;
using fc::FcPropertyEnumeratedValue;
using fc::FcPropertyListValue;
using fc::FcPropertySingleValue;
using fc::FcPropertyTableValue;
using fc::FcValue;
using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;
using object::PropertyValue;

namespace {

using PropertyValuePair = std::pair<PropertyValue, PropertyValue>;

bool holdsNothing(const PropertyValue& value) {
    if (const auto* text = value.getIf<std::string>()) {
        return text->empty();
    }
    if (const auto* text = value.getIf<std::optional<std::string>>()) {
        return !*text || (*text)->empty();
    }
    return value.isEmpty();
}

/// The parts between semicolons; what follows the last semicolon is a part if it isn't empty.
std::vector<std::string> splitOnSemicolon(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t length = text.find(';');
        parts.emplace_back(text.substr(0, length));
        text.remove_prefix(length == std::string_view::npos ? text.size() : length + 1);
    }
    return parts;
}

/// The number with six decimals, as the locale of the process writes it.
std::string decimalText(double number) {
    const int length = std::snprintf(nullptr, 0, "%f", number);
    std::string text(static_cast<std::size_t>(length), '\0');
    static_cast<void>(std::snprintf(text.data(), text.size() + 1, "%f", number));
    return text;
}

void setSingle(FcPropertySingleValue& property, fc::Data& data, const PropertyValue& value) {
    if (!property.setFromPropertyValue(value)) {
        property.deleteProperty(data, false);
    }
}

void setEnumerated(FcPropertyEnumeratedValue& property, fc::Data& data, const PropertyValue& value) {
    const auto* const text = value.getIf<std::string>();
    if (text == nullptr) {
        property.deleteProperty(data, false);
        return;
    }
    std::vector<FcValue> values;
    for (std::string& part : splitOnSemicolon(*text)) {
        values.emplace_back(fc::FcSimpleValue(fc::FcLabel(std::move(part))));
    }
    property.enumerationValues = std::move(values);
}

void reportOtherType() {
    if (assert::Assert::isEnabled()) {
        assert::Assert::addAssert({0, "Only implemented for string, double and int",
                                   "orv::domain::shared::enhancementsforreferencemodel::PsetData::setValue",
                                   "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData", 188});
    }
}

/// The texts of the upper bound, the lower bound and the set point, as far as the value has them.
std::vector<std::string> boundTexts(const PropertyValue& value) {
    if (const auto* text = value.getIf<std::string>()) {
        return splitOnSemicolon(*text);
    }
    if (const auto* number = value.getIf<double>()) {
        return {decimalText(*number)};
    }
    if (const auto* number = value.getIf<int>()) {
        return {std::to_string(*number)};
    }
    reportOtherType();
    return {};
}

void setBounded(FcPropertyBoundedValue& property, const PropertyValue& value) {
    const std::vector<std::string> texts = boundTexts(value);
    const auto* const number = value.getIf<double>();
    const bool isTaken = number == nullptr || std::isfinite(*number);
    FcValue* const bounds[] = {&property.upperBoundValue, &property.lowerBoundValue, &property.setPointValue};
    for (std::size_t index = 0; index < std::size(bounds); ++index) {
        if (index >= texts.size()) {
            *bounds[index] = FcValue();
        } else if (isTaken) {
            bounds[index]->setValueOnTypeFromString(texts[index]);
        } else {
            *bounds[index] = FcValue(bounds[index]->getType());
        }
    }
}

void setPresent(FcProperty& property, fc::Data& data, const PropertyValue& value) {
    switch (property.kindNumber()) {
    case FcPropertySingleValue::classNumber:
        return setSingle(static_cast<FcPropertySingleValue&>(property), data, value);
    case FcPropertyEnumeratedValue::classNumber:
        return setEnumerated(static_cast<FcPropertyEnumeratedValue&>(property), data, value);
    case FcPropertyBoundedValue::classNumber:
        return setBounded(static_cast<FcPropertyBoundedValue&>(property), value);
    default:
        return;
    }
}

/// The property made from its published definition and added to the set; null if there is no such definition.
std::shared_ptr<FcProperty> makeProperty(const std::shared_ptr<FcPropertySet>& set, const std::string& property) {
    const auto* const definition = ifc::findSchemaDefForProperty(set->name, property);
    if (definition == nullptr) {
        return nullptr;
    }
    auto made = ifc::addSchemaDefToPropertySetDefinition(definition, set);
    const bool isProperty = made && FcProperty::isProperty(made->kindNumber());
    return isProperty ? std::static_pointer_cast<FcProperty>(std::move(made)) : nullptr;
}

void fill(FcPropertyListValue& list, const std::vector<PropertyValue>& values) {
    for (const PropertyValue& value : values) {
        if (ifc::addListValue(list)) {
            list.listValues->back().updateValueFromPropertyValue(value);
        }
    }
}

void appendToOptionalList(std::optional<std::vector<FcValue>>& list, FcValue value) {
    if (!list) {
        list.emplace();
    }
    list->push_back(std::move(value));
}

void fill(FcPropertyTableValue& table, const std::vector<PropertyValuePair>& rows) {
    for (const auto& [defining, defined] : rows) {
        if (auto row = ifc::createTableValue(table)) {
            row->first.updateValueFromPropertyValue(defining);
            row->second.updateValueFromPropertyValue(defined);
            appendToOptionalList(table.definingValues, row->first);
            appendToOptionalList(table.definedValues, row->second);
        }
    }
}

/// Makes and fills a property of that class, unless there is a property of the name already.
template <typename Property, typename Values>
void setNew(const std::shared_ptr<FcPropertySet>& set, const std::string& property, const Values& values) {
    if (values.empty() || set->findProperty(property)) {
        return;
    }
    const auto made = makeProperty(set, property);
    if (made && made->kindNumber() == Property::classNumber) {
        fill(static_cast<Property&>(*made), values);
    }
}

void setIn(const std::shared_ptr<FcPropertySet>& set, const std::string& property, fc::Data& data,
           const PropertyValue& value) {
    if (holdsNothing(value)) {
        return;
    }
    auto present = set->findProperty(property);
    if (present) {
        set->adopt(*present); // a host may have put it there
    } else {
        present = makeProperty(set, property);
    }
    if (present) {
        setPresent(*present, data, value);
    }
}

void setIn(const std::shared_ptr<FcPropertySet>& set, const std::string& property, fc::Data& /*data*/,
           const std::vector<PropertyValue>& values) {
    setNew<FcPropertyListValue>(set, property, values);
}

void setIn(const std::shared_ptr<FcPropertySet>& set, const std::string& property, fc::Data& /*data*/,
           const std::vector<PropertyValuePair>& rows) {
    setNew<FcPropertyTableValue>(set, property, rows);
}

} // namespace

void PsetData::setValue(std::shared_ptr<const FcObjectDefinition> object, const std::string& pset,
                        const std::string& property, const PropertyValue& value) {
    setOn(object.get(), pset, property, value);
}

void PsetData::setValue(std::shared_ptr<const FcObjectDefinition> object, const std::string& pset,
                        const std::string& property, const std::vector<PropertyValue>& values) {
    setOn(object.get(), pset, property, values);
}

void PsetData::setValue(std::shared_ptr<const FcObjectDefinition> object, const std::string& pset,
                        const std::string& property, const std::vector<PropertyValuePair>& values) {
    setOn(object.get(), pset, property, values);
}

void PsetData::setValue(const Guid& guid, const std::string& pset, const std::string& property,
                        const PropertyValue& value) {
    setOn(guid, pset, property, value);
}

void PsetData::setValue(const Guid& guid, const std::string& pset, const std::string& property,
                        const std::vector<PropertyValue>& values) {
    setOn(guid, pset, property, values);
}

void PsetData::setValue(const Guid& guid, const std::string& pset, const std::string& property,
                        const std::vector<PropertyValuePair>& values) {
    setOn(guid, pset, property, values);
}

template <typename Value>
void PsetData::setOn(const FcObjectDefinition* object, const std::string& pset, const std::string& property,
                     const Value& value) const {
    if (const auto shadow = db && object != nullptr ? db->getShadowObject(*object) : nullptr) {
        setOnShadow(*shadow, pset, property, value);
    }
}

template <typename Value>
void PsetData::setOn(const Guid& guid, const std::string& pset, const std::string& property, const Value& value) const {
    if (const auto shadow = findShadowObject(guid)) {
        setOnShadow(*shadow, pset, property, value); // which getShadowObject would only find once more
    } else {
        setOn(resolveObject(guid).get(), pset, property, value);
    }
}

template <typename Value>
void PsetData::setOnShadow(FcObjectDefinition& shadow, const std::string& pset, const std::string& property,
                           const Value& value) const {
    const auto set = shadow.getOrCreatePropertySetDefinition<FcPropertySet>(db->data(), pset);
    if (set) {
        setIn(set, property, db->data(), value);
    }
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

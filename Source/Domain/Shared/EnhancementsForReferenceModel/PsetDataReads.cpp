#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"

#include <stdexcept>

namespace orv::domain::shared::enhancementsforreferencemodel {

using fc::FcProperty;
using fc::FcPropertyBoundedValue;
using fc::FcPropertyEnumeratedValue;
using fc::FcPropertyListValue;
using fc::FcPropertySingleValue;
using fc::FcPropertyTableValue;
using fc::FcValue;
using object::PropertyValue;

namespace {

using PropertyValuePair = std::pair<PropertyValue, PropertyValue>;

/// The text between the brackets of the list of values.
PropertyValue enumeratedValue(const FcProperty& property) {
    auto text = property.getAttributeAsString("EnumerationValues");
    if (!text) {
        return {};
    }
    if (text->empty()) {
        throw std::out_of_range("invalid string position");
    }
    if (text->front() == '(') {
        text->erase(0, 1);
    }
    if (!text->empty() && text->back() == ')') {
        text->pop_back();
    }
    return std::move(*text);
}

PropertyValue boundedValue(const FcPropertyBoundedValue& property) {
    const auto textOf = [](const FcValue& value) { return value.getAsString(false).value_or(""); };
    return textOf(property.lowerBoundValue) + ';' + textOf(property.upperBoundValue) + ';' +
           textOf(property.setPointValue);
}

std::vector<PropertyValue> valuesOf(const std::optional<std::vector<FcValue>>& list) {
    std::vector<PropertyValue> values;
    if (list) {
        values.reserve(list->size());
        for (const FcValue& value : *list) {
            values.push_back(value.getAsPropertyValue());
        }
    }
    return values;
}

} // namespace

PropertyValue PsetData::getValue(const Guid& guid, const std::string& pset, const std::string& property) {
    const auto found = findProperty(guid, pset, property);
    if (!found) {
        return {};
    }
    switch (found->kindNumber()) {
    case FcPropertySingleValue::classNumber:
        return static_cast<const FcPropertySingleValue&>(*found).nominalValue.getAsPropertyValue();
    case FcPropertyEnumeratedValue::classNumber:
        return enumeratedValue(*found);
    case FcPropertyBoundedValue::classNumber:
        return boundedValue(static_cast<const FcPropertyBoundedValue&>(*found));
    default:
        return {};
    }
}

std::optional<std::string> PsetData::getValueAsString(const Guid& guid, const std::string& pset,
                                                      const std::string& property) {
    PropertyValue value = getValue(guid, pset, property);
    return value.isEmpty() ? std::nullopt : std::optional(std::move(value).get<std::string>());
}

std::optional<double> PsetData::getValueAsDouble(const Guid& guid, const std::string& pset,
                                                 const std::string& property) {
    const PropertyValue value = getValue(guid, pset, property);
    const auto* const number = value.getIf<double>();
    return number == nullptr ? std::nullopt : std::optional(*number);
}

std::optional<bool> PsetData::getValueAsBool(const Guid& guid, const std::string& pset, const std::string& property) {
    const PropertyValue value = getValue(guid, pset, property);
    const auto* const boolean = value.getIf<bool>();
    return boolean == nullptr ? std::nullopt : std::optional(*boolean);
}

std::vector<PropertyValue> PsetData::getListValues(const Guid& guid, const std::string& pset,
                                                   const std::string& property) {
    const auto found = findProperty(guid, pset, property);
    if (!found || found->kindNumber() != FcPropertyListValue::classNumber) {
        return {};
    }
    return valuesOf(static_cast<const FcPropertyListValue&>(*found).listValues);
}

std::vector<PropertyValuePair> PsetData::getTableValues(const Guid& guid, const std::string& pset,
                                                        const std::string& property) {
    const auto found = findProperty(guid, pset, property);
    if (!found || found->kindNumber() != FcPropertyTableValue::classNumber) {
        return {};
    }
    const auto& table = static_cast<const FcPropertyTableValue&>(*found);
    auto defining = valuesOf(table.definingValues);
    auto defined = valuesOf(table.definedValues);
    if (defining.size() != defined.size()) {
        return {};
    }
    std::vector<PropertyValuePair> rows;
    rows.reserve(defining.size());
    for (std::size_t row = 0; row < defining.size(); ++row) {
        rows.emplace_back(std::move(defining[row]), std::move(defined[row]));
    }
    return rows;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

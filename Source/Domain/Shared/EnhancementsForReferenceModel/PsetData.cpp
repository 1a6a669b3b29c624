#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include "Assert/Assert.h"
#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <tuple>

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

PsetData::ReadOnlyCallback& readOnlyCallback() {
    static PsetData::ReadOnlyCallback callback;
    return callback;
}

PsetData::ReadWriteCallback& readWriteCallback() {
    static PsetData::ReadWriteCallback callback;
    return callback;
}

PsetData::ObjectCallback& objectCallback() {
    static PsetData::ObjectCallback callback;
    return callback;
}

void report(std::string_view message, std::string_view function, std::uint32_t line) {
    if (assert::Assert::isEnabled()) {
        constexpr std::string_view sourcePath = "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData";
        assert::Assert::addAssert({0, message, function, sourcePath, line});
    }
}

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

/// The texts of the upper bound, the lower bound and the set point, as far as the value gives them.
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
    report("Only implemented for string, double and int",
           "orv::domain::shared::enhancementsforreferencemodel::PsetData::setValue", 188);
    return {};
}

void setBounded(FcPropertyBoundedValue& property, const PropertyValue& value) {
    const std::vector<std::string> texts = boundTexts(value);
    FcValue* const bounds[] = {&property.upperBoundValue, &property.lowerBoundValue, &property.setPointValue};
    for (std::size_t index = 0; index < std::size(bounds); ++index) {
        if (index < texts.size()) {
            bounds[index]->setValueOnTypeFromString(texts[index]);
        } else {
            *bounds[index] = FcValue();
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
    const auto made = ifc::addSchemaDefToPropertySetDefinition(definition, set);
    const bool isProperty =
        made && made->kindNumber() >= FcProperty::firstClassNumber && made->kindNumber() <= FcProperty::lastClassNumber;
    return isProperty ? std::static_pointer_cast<FcProperty>(made) : nullptr;
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
    if (!present) {
        present = makeProperty(set, property);
    }
    if (present) {
        set->adopt(*present); // a host may have put it there
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

void PsetData::getPsetShadowDbReadOnlyCallbackSet(ReadOnlyCallback callback) {
    readOnlyCallback() = std::move(callback);
}

void PsetData::getPsetShadowDbReadWriteCallbackSet(ReadWriteCallback callback) {
    readWriteCallback() = std::move(callback);
}

void PsetData::getObjectFromGuidCallbackSet(ObjectCallback callback) {
    objectCallback() = std::move(callback);
}

PsetData::PsetData() : PsetData(true) {}

PsetData::PsetData(bool readOnly) {
    const bool hasCallback = readOnly ? static_cast<bool>(readOnlyCallback()) : static_cast<bool>(readWriteCallback());
    if (!hasCallback) {
        report("Could not set callback for PsetData",
               "orv::domain::shared::enhancementsforreferencemodel::PsetData::PsetData", 52);
        return;
    }
    if (readOnly) {
        db = readOnlyCallback()();
    } else {
        std::tie(db, guard) = readWriteCallback()();
    }
}

std::shared_ptr<fc::FcShadowDb> PsetData::getDb() {
    return db;
}

void PsetData::setValue(std::shared_ptr<const FcObjectDefinition> object, const std::string& pset,
                        const std::string& property, const PropertyValue& value) {
    setOn(getShadowObject(*object), pset, property, value);
}

void PsetData::setValue(std::shared_ptr<const FcObjectDefinition> object, const std::string& pset,
                        const std::string& property, const std::vector<PropertyValue>& values) {
    setOn(getShadowObject(*object), pset, property, values);
}

void PsetData::setValue(std::shared_ptr<const FcObjectDefinition> object, const std::string& pset,
                        const std::string& property, const std::vector<PropertyValuePair>& values) {
    setOn(getShadowObject(*object), pset, property, values);
}

void PsetData::setValue(const Guid& guid, const std::string& pset, const std::string& property,
                        const PropertyValue& value) {
    setOn(getShadowObject(guid), pset, property, value);
}

void PsetData::setValue(const Guid& guid, const std::string& pset, const std::string& property,
                        const std::vector<PropertyValue>& values) {
    setOn(getShadowObject(guid), pset, property, values);
}

void PsetData::setValue(const Guid& guid, const std::string& pset, const std::string& property,
                        const std::vector<PropertyValuePair>& values) {
    setOn(getShadowObject(guid), pset, property, values);
}

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

std::shared_ptr<FcObjectDefinition> PsetData::findShadowObject(const Guid& guid) const {
    auto found = db ? db->data().findByGuid(guid) : nullptr;
    const bool isObject = found && fc::IfcClass::isObjectDefinition(found->kindNumber());
    return isObject ? std::static_pointer_cast<FcObjectDefinition>(std::move(found)) : nullptr;
}

std::shared_ptr<const FcObjectDefinition> PsetData::resolveObject(const Guid& guid) const {
    if (!db) {
        return nullptr;
    }
    if (const auto found = db->data().findByGuid(guid)) {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(found);
    }
    return objectCallback() ? objectCallback()(guid) : nullptr;
}

std::shared_ptr<FcObjectDefinition> PsetData::getShadowObject(const Guid& guid) const {
    if (auto shadow = findShadowObject(guid)) {
        return shadow;
    }
    const auto object = resolveObject(guid);
    return object ? getShadowObject(*object) : nullptr;
}

std::shared_ptr<FcObjectDefinition> PsetData::getShadowObject(const FcObjectDefinition& object) const {
    return db ? db->getShadowObject(object) : nullptr;
}

std::shared_ptr<FcProperty> PsetData::findProperty(const Guid& guid, const std::string& pset,
                                                   const std::string& property) const {
    const auto shadow = findShadowObject(guid);
    const auto set = shadow ? shadow->getPropertySetDefinitionNonConst<FcPropertySet>(pset) : nullptr;
    return set ? set->findProperty(property) : nullptr;
}

template <typename Value>
void PsetData::setOn(const std::shared_ptr<FcObjectDefinition>& shadow, const std::string& pset,
                     const std::string& property, const Value& value) const {
    if (!shadow) {
        return;
    }
    if (const auto set = shadow->getOrCreatePropertySetDefinition<FcPropertySet>(db->data(), pset)) {
        setIn(set, property, db->data(), value);
    }
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

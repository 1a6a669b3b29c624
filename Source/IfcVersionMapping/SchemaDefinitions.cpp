#include "IfcVersionMapping/SchemaDefinitions.h"

#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertySingleValue.h"

namespace orv::ifc {

using def::xml::Def;
using def::xml::PropertyKind;

namespace {

std::shared_ptr<fc::FcProperty> makeSingleValue(const fc::FcValueType* type) {
    auto property = std::make_shared<fc::FcPropertySingleValue>();
    property->nominalValue = fc::FcValue(type);
    return property;
}

std::shared_ptr<fc::FcProperty> makeBoundedValue(const fc::FcValueType* type) {
    auto property = std::make_shared<fc::FcPropertyBoundedValue>();
    property->upperBoundValue = fc::FcValue(type);
    property->lowerBoundValue = fc::FcValue(type);
    property->setPointValue = fc::FcValue(type);
    return property;
}

std::shared_ptr<fc::FcProperty> makeListValue(const fc::FcValueType* type) {
    auto property = std::make_shared<fc::FcPropertyListValue>();
    property->valueType = type;
    return property;
}

std::shared_ptr<fc::FcProperty> makeTableValue(const fc::FcValueType* definingType,
                                               const fc::FcValueType* definedType) {
    auto property = std::make_shared<fc::FcPropertyTableValue>();
    property->definingType = definingType;
    property->definedType = definedType;
    return property;
}

std::shared_ptr<fc::FcProperty> makeProperty(const Def& definition) {
    const fc::FcValueType* const type = fc::FcValueType::find(definition.valueType);
    switch (definition.kind) {
    case PropertyKind::Single:
        return makeSingleValue(type);
    case PropertyKind::Enumerated:
        return std::make_shared<fc::FcPropertyEnumeratedValue>();
    case PropertyKind::Bounded:
        return makeBoundedValue(type);
    case PropertyKind::List:
        return makeListValue(type);
    case PropertyKind::Table:
        return makeTableValue(type, fc::FcValueType::find(definition.definedValueType));
    case PropertyKind::Reference:
        return std::make_shared<fc::FcPropertyWithoutValue>(*fc::IfcClass::find("IfcPropertyReferenceValue"));
    case PropertyKind::Complex:
        return std::make_shared<fc::FcPropertyWithoutValue>(*fc::IfcClass::find("IfcComplexProperty"));
    }
    return nullptr;
}

} // namespace

std::shared_ptr<fc::FcBase>
addSchemaDefToPropertySetDefinition(const Def* definition,
                                    const std::shared_ptr<fc::core::kernel::FcPropertySet>& set) {
    if (definition == nullptr || set == nullptr) {
        return nullptr;
    }
    std::shared_ptr<fc::FcProperty> property = makeProperty(*definition);
    property->name = std::string(definition->property); // which takes no more memory than it needs
    set->addProperty(property);
    return property;
}

bool addListValue(fc::FcPropertyListValue& list) {
    if (!list.listValues) {
        list.listValues.emplace();
    }
    list.listValues->emplace_back(list.valueType);
    return true;
}

std::optional<std::pair<fc::FcValue, fc::FcValue>> createTableValue(const fc::FcPropertyTableValue& table) {
    return std::optional<std::pair<fc::FcValue, fc::FcValue>>(std::in_place, table.definingType, table.definedType);
}

} // namespace orv::ifc

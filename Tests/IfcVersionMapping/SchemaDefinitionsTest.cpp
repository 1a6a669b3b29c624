#include "IfcVersionMapping/SchemaDefinitions.h"

#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertySingleValue.h"

#include <gtest/gtest.h>

namespace orv::ifc {
namespace {

using def::xml::Def;
using def::xml::PropertyKind;

/// Makes a property of the published definition in a set of its own.
template <class Property>
std::shared_ptr<Property> make(const std::string& pset, const std::string& property) {
    const auto set = std::make_shared<fc::core::kernel::FcPropertySet>();
    const auto made = addSchemaDefToPropertySetDefinition(findSchemaDefForProperty(pset, property), set);
    EXPECT_TRUE(made != nullptr && set->findProperty(property) == made) << pset << ' ' << property;
    return std::dynamic_pointer_cast<Property>(made);
}

TEST(SchemaDefinitions, tellWhatWasPublished) {
    const Def& fireRating = *findSchemaDefForProperty("Pset_WallCommon", "FireRating");
    EXPECT_EQ(fireRating.kind, PropertyKind::Single);
    EXPECT_EQ(fireRating.valueType, "IfcLabel");
    EXPECT_EQ(fireRating.version, "IFC4X3_ADD2");
    const Def& status = *findSchemaDefForProperty("Pset_WallCommon", "Status");
    EXPECT_EQ(status.kind, PropertyKind::Enumerated);
    EXPECT_EQ(status.enumerationValues, "DEMOLISH;EXISTING;NEW;TEMPORARY;OTHER;NOTKNOWN;UNSET");
}

TEST(SchemaDefinitions, areThoseOfTheNewestVersion) {
    EXPECT_EQ(findSchemaDefForProperty("Pset_BuildingCommon", "NumberOfStoreys")->valueType, "IfcCountMeasure");
    EXPECT_EQ(findSchemaDefForProperty("Pset_Warranty", "WarrantyEndDate")->version, "IFC4");
    EXPECT_EQ(findSchemaDefForProperty("Pset_SanitaryTerminalTypeWCSeat", "SeatType")->version, "IFC2X3");
}

TEST(SchemaDefinitions, areFoundByTheirExactNamesAlone) {
    EXPECT_EQ(definitions().size(), 4501U);
    for (const Def& definition : definitions()) {
        const std::string set(definition.propertySet);
        const std::string property(definition.property);
        EXPECT_EQ(findSchemaDefForProperty(set, property), &definition) << set << ' ' << property;
        EXPECT_EQ(findSchemaDefForProperty(set, property + 'x'), nullptr) << set << ' ' << property;
        EXPECT_EQ(findSchemaDefForProperty(property, set), nullptr) << set << ' ' << property;
    }
    EXPECT_EQ(findSchemaDefForProperty("Pset_WallCommon", "firerating"), nullptr);
    EXPECT_EQ(findSchemaDefForProperty("PSET_WALLCOMMON", "FireRating"), nullptr);
    EXPECT_EQ(findSchemaDefForProperty("Pset_WallCommon", ""), nullptr);
    EXPECT_EQ(findSchemaDefForProperty("", ""), nullptr);
}

TEST(SchemaDefinitions, makePropertiesOfTheirKindsAndTypes) {
    const auto single = make<fc::FcPropertySingleValue>("Pset_WallCommon", "FireRating");
    EXPECT_EQ(single->nominalValue.getType(), fc::FcValueType::find("IfcLabel"));
    EXPECT_FALSE(make<fc::FcPropertyEnumeratedValue>("Pset_WallCommon", "Status")->enumerationValues);
    const auto bounded = make<fc::FcPropertyBoundedValue>("Pset_AirTerminalBoxTypeCommon", "AirFlowRateRange");
    for (const fc::FcValue& value : {bounded->lowerBoundValue, bounded->upperBoundValue, bounded->setPointValue}) {
        EXPECT_EQ(value.getType(), fc::FcValueType::find("IfcVolumetricFlowRateMeasure"));
    }
    EXPECT_STREQ(make<fc::FcProperty>("Pset_ActionRequest", "RequestSourceName")->className(),
                 "IfcPropertyReferenceValue");
}

TEST(SchemaDefinitions, makePropertiesWithoutATypeIfItIsMissingOrUnknown) {
    const auto untyped = make<fc::FcPropertySingleValue>("Pset_ReinforcingMeshCommon", "MeshLength");
    EXPECT_EQ(untyped->nominalValue.getType(), nullptr);
    const auto list = make<fc::FcPropertyListValue>("Pset_ReinforcingBarCommon", "BendingParameters");
    EXPECT_EQ(list->valueType, nullptr);
}

TEST(SchemaDefinitions, ofHostsMakePropertiesToo) {
    const auto set = std::make_shared<fc::core::kernel::FcPropertySet>();
    const Def complex{"S", "P", PropertyKind::Complex, {}, {}, {}, {}};
    EXPECT_STREQ(addSchemaDefToPropertySetDefinition(&complex, set)->className(), "IfcComplexProperty");
    EXPECT_EQ(set->properties.front()->name, "P");
    EXPECT_EQ(addSchemaDefToPropertySetDefinition(nullptr, set), nullptr);
    EXPECT_EQ(addSchemaDefToPropertySetDefinition(&complex, nullptr), nullptr);
    EXPECT_EQ(set->properties.size(), 1U);
}

TEST(SchemaDefinitions, listsAndTablesTakeValuesOfTheirTypes) {
    const auto list = make<fc::FcPropertyListValue>("Pset_Address", "AddressLines");
    EXPECT_FALSE(list->listValues);
    EXPECT_TRUE(addListValue(*list) && addListValue(*list));
    ASSERT_EQ(list->listValues.value().size(), 2U);
    EXPECT_EQ(list->listValues->back().getType(), fc::FcValueType::find("IfcLabel"));
    const auto table = make<fc::FcPropertyTableValue>("Pset_AudioVisualApplianceTypeAmplifier", "AudioAmplification");
    const auto pair = createTableValue(*table).value();
    EXPECT_EQ(pair.first.getType(), fc::FcValueType::find("IfcFrequencyMeasure"));
    EXPECT_EQ(pair.second.getType(), fc::FcValueType::find("IfcSoundPowerMeasure"));
    EXPECT_FALSE(table->definingValues || table->definedValues);
}

} // namespace
} // namespace orv::ifc

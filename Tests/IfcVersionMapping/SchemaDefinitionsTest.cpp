#include "IfcVersionMapping/SchemaDefinitions.h"

#include <gtest/gtest.h>

namespace orv::ifc {
namespace {

using def::xml::Def;
using def::xml::PropertyKind;

TEST(SchemaDefinitions, areThoseOfTheNewestVersionAsPublished) {
    const Def& status = *findSchemaDefForProperty("Pset_WallCommon", "Status");
    EXPECT_EQ(status.kind, PropertyKind::Enumerated);
    EXPECT_EQ(status.valueType, "IfcLabel");
    EXPECT_EQ(status.enumerationValues, "DEMOLISH;EXISTING;NEW;TEMPORARY;OTHER;NOTKNOWN;UNSET");
    EXPECT_EQ(status.source, "IFC4X3_ADD2");
    EXPECT_EQ(findSchemaDefForProperty("Pset_BuildingCommon", "NumberOfStoreys")->valueType, "IfcCountMeasure");
    EXPECT_EQ(findSchemaDefForProperty("Pset_Warranty", "WarrantyEndDate")->source, "IFC4");
    EXPECT_EQ(findSchemaDefForProperty("Pset_SanitaryTerminalTypeWCSeat", "SeatType")->source, "IFC2X3");
}

TEST(SchemaDefinitions, areFoundByTheirExactNamesAlone) {
    EXPECT_EQ(definitions().size(), 4501U);
    for (const Def& definition : definitions()) {
        const std::string set(definition.propertySet);
        const std::string property(definition.property);
        EXPECT_EQ(findSchemaDefForProperty(set, property), &definition) << set << ' ' << property;
        EXPECT_EQ(findSchemaDefForProperty(set, property + 'x'), nullptr) << set << ' ' << property;
        EXPECT_EQ(std::string_view(definition.enumerationValues).find('\\'), std::string_view::npos)
            << set << ' ' << property;
    }
    EXPECT_EQ(findSchemaDefForProperty("Pset_WallCommon", "firerating"), nullptr);
    EXPECT_EQ(findSchemaDefForProperty("PSET_WALLCOMMON", "FireRating"), nullptr);
    EXPECT_EQ(findSchemaDefForProperty("", ""), nullptr);
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

} // namespace
} // namespace orv::ifc

#include "FoundationClasses/IfcClass.h"

#include <gtest/gtest.h>

namespace orv::fc {
namespace {

TEST(IfcClass, isFoundByItsNameInAnyCase) {
    for (const char* name : {"IfcWall", "IFCWALL", "ifcwall"}) {
        ASSERT_NE(IfcClass::find(name), nullptr) << name;
        EXPECT_EQ(IfcClass::find(name)->name, "IfcWall");
    }
    for (const char* name : {"", "Ifc", "IfcWal", "IfcWalls", "IfcCartesianPoint"}) {
        EXPECT_EQ(IfcClass::find(name), nullptr) << name;
    }
}

TEST(IfcClass, knowsItsDescendantsAndTheBordersOfTheObjectDefinitions) {
    const IfcClass& wall = *IfcClass::find("IfcWall");
    EXPECT_TRUE(wall.includes(*IfcClass::find("IfcWallStandardCase")));
    EXPECT_TRUE(wall.includes(*IfcClass::find("IfcWallElementedCase")));
    EXPECT_FALSE(wall.includes(*IfcClass::find("IfcWindow")));
    EXPECT_FALSE(IfcClass::find("IfcRoot")->isObjectDefinition());
    EXPECT_TRUE(IfcClass::find("IfcObjectDefinition")->isObjectDefinition());
    EXPECT_TRUE(IfcClass::find("IfcSubContractResourceType")->isObjectDefinition());
    EXPECT_FALSE(IfcClass::find("IfcPropertyDefinition")->isObjectDefinition());
}

TEST(IfcClass, ofAnOlderVersionBearsItsOwnNameAndTheNumbersOfThePresentClass) {
    const IfcClass& style = *IfcClass::find("IFCDOORSTYLE");
    EXPECT_EQ(style.name, "IfcDoorStyle");
    EXPECT_EQ(style.kindNumber, IfcClass::find("IfcTypeProduct")->kindNumber);
    EXPECT_TRUE(style.isObjectDefinition());
    EXPECT_TRUE(style.includes(style));
    EXPECT_FALSE(style.includes(*IfcClass::find("IfcFurnitureType")));
    EXPECT_TRUE(IfcClass::find("IfcTypeProduct")->includes(style));
    EXPECT_TRUE(IfcClass::find("IfcBuildingElement")->includes(*IfcClass::find("IfcWall")));
}

} // namespace
} // namespace orv::fc

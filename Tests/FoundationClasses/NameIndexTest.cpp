#include "FoundationClasses/Data.h"
#include "FoundationClasses/FcObjectDefinition.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcPropertySingleValue.h"

#include <gtest/gtest.h>

#include <utility>

namespace orv::fc {
namespace {

using core::kernel::FcObjectDefinition;
using core::kernel::FcPropertySet;

std::shared_ptr<FcProperty> propertyOf(const std::string& name) {
    auto property = std::make_shared<FcPropertySingleValue>();
    property->name = name;
    return property;
}

/// P0, P1 and so on, so many that they aren't looked at one by one.
std::shared_ptr<FcPropertySet> largeSet() {
    auto set = std::make_shared<FcPropertySet>();
    for (int number = 0; number < 100; ++number) {
        set->addProperty(propertyOf(std::string("P").append(std::to_string(number))));
    }
    return set;
}

TEST(NameIndexTest, findsWhatAHostMadeOfTheVectorSinceTheLastSearch) {
    const auto set = largeSet();
    auto& properties = set->properties;
    const auto find = [&set](const std::string& name) { return set->findProperty(name); };
    EXPECT_EQ(find("P99"), properties.back());
    EXPECT_EQ(find("P100"), nullptr);

    for (int round = 0; round < 3; ++round) { // the new one lies where the old one lay, if the memory is free
        properties.pop_back();
        properties.push_back(propertyOf(std::string("Q").append(std::to_string(round))));
        EXPECT_EQ(find(std::string("Q").append(std::to_string(round))), properties.back());
        EXPECT_EQ(find("P99"), nullptr);
    }

    properties.insert(properties.begin(), propertyOf("P50"));
    EXPECT_EQ(find("P50"), properties.front()) << "the first of two";
    properties.push_back(propertyOf("P7"));
    EXPECT_EQ(find("P7"), properties[8]) << "the first of two";
    std::swap(properties[8], properties.back());
    EXPECT_EQ(find("P7"), properties[8]) << "the first of two";

    properties[20]->name = "renamed";
    EXPECT_EQ(find("P19"), nullptr);
    EXPECT_EQ(find("renamed"), properties[20]);

    properties.erase(properties.begin(), properties.begin() + 60);
    EXPECT_EQ(find("P59"), properties.front());
    EXPECT_EQ(find("P58"), nullptr);
    properties.clear();
    EXPECT_EQ(find("P59"), nullptr);
}

TEST(NameIndexTest, keepsTheSetsOfAnObjectApartFromThoseOfItsCopy) {
    Data data;
    FcObjectDefinition object(*IfcClass::find("IfcWall"));
    for (int number = 0; number < 100; ++number) {
        const auto set = object.getOrCreatePropertySetDefinition<FcPropertySet>(data, std::to_string(number));
        EXPECT_EQ(object.getOrCreatePropertySetDefinition<FcPropertySet>(data, std::to_string(number)), set);
    }
    EXPECT_EQ(object.propertySetDefinitions.size(), 100U);

    const FcObjectDefinition copy = object;
    object.propertySetDefinitions.pop_back();
    EXPECT_EQ(object.getPropertySetDefinitionNonConst<FcPropertySet>("99"), nullptr);
    EXPECT_EQ(copy.getPropertySetDefinitionNonConst<FcPropertySet>("99"), copy.propertySetDefinitions.back());
}

} // namespace
} // namespace orv::fc

#include "Object/PropertyValue.h"

#include "Support/ReportTest.h"

#include <gtest/gtest.h>

namespace orv::object {
namespace {

using PropertyValueTest = tests::ReportTest;

struct Alternative {
    PropertyValue value;
    int index;
    const std::type_info& type;
};

TEST_F(PropertyValueTest, tellsItsAlternativesApart) {
    const Alternative alternatives[] = {
        {PropertyValue(), 0, PropertyValue().getType()},
        {1, 1, typeid(int)},
        {Logical::Unknown, 2, typeid(Logical)},
        {true, 3, typeid(bool)},
        {2.5, 4, typeid(double)},
        {std::string("text"), 5, typeid(std::string)},
        {"text", 5, typeid(std::string)},
        {std::optional<int>(), 6, typeid(std::optional<int>)},
        {std::optional(Logical::True), 7, typeid(std::optional<Logical>)},
        {std::optional(false), 8, typeid(std::optional<bool>)},
        {std::optional(1.5), 9, typeid(std::optional<double>)},
        {std::optional<std::string>(), 10, typeid(std::optional<std::string>)},
    };
    for (const auto& [value, index, type] : alternatives) {
        EXPECT_EQ(value.getIndex(), index);
        EXPECT_EQ(value.isEmpty(), index == 0);
        EXPECT_EQ(value.getType(), type) << index;
    }
}

TEST_F(PropertyValueTest, reportsAGetOfAnotherAlternativeAndGivesItsDefault) {
    const PropertyValue value(2.5);
    const std::string expected =
        "Source/Object/PropertyValue:93: orv::object::PropertyValue::get: Property value doesn't hold the given type.";
    EXPECT_EQ(value.get<double>(), 2.5);
    EXPECT_EQ(value.get<std::string>(), "");
    EXPECT_EQ(takeReports(), tests::Reports{expected});
    EXPECT_EQ(PropertyValue("1").get<bool>(), false);
    EXPECT_EQ(PropertyValue().get<std::optional<std::string>>(), std::nullopt);
    EXPECT_EQ(takeReports(), tests::Reports({expected, expected}));

    assert::Assert::setEnabled(false);
    EXPECT_EQ(value.get<std::string>(), "");
}

} // namespace
} // namespace orv::object

#include "FoundationClasses/FcValue.h"

#include "Support/GermanLocale.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace orv::fc {
namespace {

using FcValueTest = tests::ReportTest;
using object::Logical;
using object::PropertyValue;

struct Taken {
    const char* type; ///< Empty for none.
    PropertyValue given;
    std::optional<std::string> text; ///< Nothing if it is refused.
    int index;                       ///< The alternative that it reads back in.
};

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST_F(FcValueTest, takesWhatConvertsWithoutLossOfMeaning) {
    const Taken cases[] = {
        // clang-format off
        {"IfcReal", 5, "5", 4}, {"IfcReal", 0.1, "0.1", 4}, {"IfcReal", "2.5", "2.5", 4},
        {"IfcReal", "-1e-7", "-1e-07", 4}, {"IfcReal", std::optional(1.5), "1.5", 4}, {"IfcReal", "2.5 ", {}, 0},
        {"IfcReal", "", {}, 0}, {"IfcReal", "much", {}, 0}, {"IfcReal", "nan", {}, 0}, {"IfcReal", "1e999", {}, 0},
        {"IfcReal", true, {}, 0}, {"IfcReal", infinity, {}, 0},
        {"IfcNumericMeasure", 3, "3", 4}, {"IfcInteger", -7, "-7", 1}, {"IfcInteger", 3.0, "3", 1},
        {"IfcInteger", "2147483647", "2147483647", 1}, {"IfcInteger", "2147483648", {}, 0},
        {"IfcInteger", "-2147483648", "-2147483648", 1}, {"IfcInteger", "-2147483649", {}, 0},
        {"IfcInteger", 2.5, {}, 0}, {"IfcLabel", 5, "5", 5}, {"IfcLabel", 2.5, "2.5", 5},
        {"IfcLabel", true, "true", 5}, {"IfcLabel", std::optional<std::string>("a"), "a", 5},
        {"IfcLabel", std::optional<std::string>(), {}, 0}, {"IfcLabel", PropertyValue(), {}, 0},
        {"IfcBoolean", true, "true", 3}, {"IfcBoolean", "false", "false", 3},
        {"IfcBoolean", Logical::True, "true", 3}, {"IfcBoolean", Logical::Unknown, {}, 0}, {"IfcBoolean", 1, {}, 0},
        {"IfcBoolean", "1", {}, 0}, {"IfcLogical", false, "false", 3}, {"IfcLogical", "unknown", "unknown", 2},
        {"IfcReal", 1e-5, "0.00001", 4}, {"IfcReal", 9.9e-6, "9.9e-06", 4}, {"IfcReal", -0.00012, "-0.00012", 4},
        {"IfcReal", 999999999999999.875, "999999999999999.9", 4}, {"IfcReal", 1e15, "1e+15", 4}, {"IfcReal", -0.0, "0", 4},
        {"IfcLabel", 100000.0, "100000", 5}, {"IfcLabel", infinity, {}, 0}, {"IfcLabel", "NaN", "NaN", 5},
        {"", infinity, {}, 0}, {"", "007", "007", 5}, {"", "+5", "+5", 5}, {"", "-0.50", "-0.5", 4}, {"", "0", "0", 4},
        {"", "12345678901234567890", "12345678901234567890", 5}, {"", "0.10000000000000001", "0.10000000000000001", 5},
        {"", "100000000000000000000", "1e+20", 4}, {"", "12.300000", "12.3", 4}, {"", "120", "120", 4},
        {"", "5.", "5.", 5}, {"", ".5", ".5", 5}, {"", "1e5", "1e5", 5}, {"", "1.2.3", "1.2.3", 5}, {"", "-", "-", 5},
        {"", 7, "7", 4}, {"", "7", "7", 4}, {"", "a", "a", 5}, {"", "", "", 5}, {"", false, "false", 3},
        // clang-format on
    };
    for (const auto& [type, given, text, index] : cases) {
        FcValue value(FcValueType::find(type));
        value.updateValueFromPropertyValue(given);
        EXPECT_EQ(value.getAsString(false), text) << type;
        EXPECT_EQ(value.getAsPropertyValue().getIndex(), index) << type << ' ' << text.value_or("-");
        EXPECT_EQ(value.getType(), FcValueType::find(type));
    }
}

TEST_F(FcValueTest, losesItsContentWhenItRefuses) {
    FcValue value(FcValueType::find("IfcReal"));
    EXPECT_TRUE(value.setValueOnTypeFromString("1.5"));
    EXPECT_EQ(value.getAsString(true), "IfcReal(1.5)");
    EXPECT_FALSE(value.setValueOnTypeFromString("x"));
    EXPECT_EQ(value.getAsString(false), std::nullopt);
}

TEST_F(FcValueTest, understandsNumbersInTheLocaleOfTheProcess) {
    ASSERT_NE(std::setlocale(LC_NUMERIC, tests::germanLocale), nullptr);
    FcValue value(FcValueType::find("IfcReal"));
    for (const char* text : {"1,5", "1.5", "1,500000"}) {
        EXPECT_TRUE(value.setValueOnTypeFromString(text)) << text;
        EXPECT_EQ(value.getAsString(false), "1.5");
    }
    EXPECT_FALSE(value.setValueOnTypeFromString("1,5,0"));
}

} // namespace
} // namespace orv::fc

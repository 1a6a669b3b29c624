#include "Annotate/Condition.h"

#include "Annotate/Arguments.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

using Texts = std::vector<std::string>;

TEST(ConditionTest, namesAProperty) {
    const std::tuple<std::string_view, std::string_view, std::string_view> texts[] = {
        {"Pset_WallCommon.IsExternal=true", "Pset_WallCommon", "IsExternal"},
        {"  Our walls . Load in kN  >=  2.5 ", "Our walls", "Load in kN"},
        {R"("Our.walls"."Load = max"<2)", "Our.walls", "Load = max"},
        {R"("absent"."a present" present)", "absent", "a present"},
        {"Set.Name of it absent", "Set", "Name of it"},
        {"A.B=C.D=E", "A", "B"},
    };
    for (const auto& [text, set, property] : texts) {
        const Condition condition(text);
        EXPECT_EQ(condition.getSet(), set) << text;
        EXPECT_EQ(condition.getProperty(), property) << text;
    }
}

TEST(ConditionTest, isRefusedWhereItIsNone) {
    for (const std::string_view text :
         {"", ".", "Set", "Set.", "Set.Name", "Set.=1", ".Name=1", "Set.Name=", "Set.Name ~ ", "Set.Name is", "Set=1",
          "Set.Name absent now", R"("Set.Name"=1)", R"("Set"x."Name"=1)", R"("Set"."Name")"}) {
        EXPECT_THROW(static_cast<void>(Condition(text)), RequestError) << text;
    }
}

TEST(ConditionTest, comparesNumbersAsSuchAndOtherwiseTexts) {
    struct Case {
        std::string_view comparison;
        Texts values;
        bool holds;
        bool concerns;
    };
    const Case cases[] = {
        {"=2.50", {"2.5"}, true, true},     {"=2.5", {"2.5 m"}, false, false}, {"=a", {"b", "a"}, true, true},
        {"=A", {"a"}, false, false},        {"<10", {"9"}, true, true},        {"<10", {"10"}, false, false},
        {"<=10", {"1e1"}, true, true},      {"<=10", {"10.5"}, false, false},  {">9", {"10"}, true, true},
        {">9", {"9"}, false, false},        {">=9", {"9"}, true, true},        {">=9", {"8.9"}, false, false},
        {">=9", {"ten"}, false, false},     {"<b", {"a"}, true, true},         {">a", {"a"}, false, false},
        {">=F60", {"F90"}, true, true},     {"!=1", {"1.0"}, false, true},     {"!=1", {"2", "1"}, false, true},
        {"!=1", {"2", "one"}, true, false}, {"~ROT", {"in rot"}, true, true},  {"~rot", {"r", "ot"}, false, false},
        {" present", {""}, true, true},     {" absent", {"a"}, false, false},
    };
    for (const auto& [comparison, values, holds, concerns] : cases) {
        const Condition condition(std::string("Set.Name").append(comparison));
        EXPECT_EQ(condition.holds(values), holds) << comparison << ' ' << values.front();
        EXPECT_EQ(condition.concerns(values), concerns) << comparison << ' ' << values.front();
    }
}

TEST(ConditionTest, holdsWithoutAValueOnlyForAbsent) {
    for (const std::string_view comparison : {"=a", "!=a", "<1", "<=1", ">1", ">=1", "~a", " present"}) {
        EXPECT_FALSE(Condition(std::string("Set.Name").append(comparison)).holds({})) << comparison;
        EXPECT_FALSE(Condition(std::string("Set.Name").append(comparison)).concerns({})) << comparison;
    }
    EXPECT_TRUE(Condition("Set.Name absent").holds({}));
}

TEST(ConditionTest, objectsToValuesThatTheDefinitionDoesNotHave) {
    const std::string isExternal =
        "By its definition the values of Pset_WallCommon.IsExternal are true;false, and \"yes\" "
        "isn't among them.";
    const std::string thermal = "By its definition the values of Pset_WallCommon.ThermalTransmittance are numbers, and "
                                "\"low\" isn't among them.";
    const std::string status =
        "By its definition the values of Pset_WallCommon.Status are DEMOLISH;EXISTING;NEW;TEMPORARY;"
        "OTHER;NOTKNOWN;UNSET, and \"new\" isn't among them.";
    const std::pair<std::string_view, std::string> texts[] = {
        {"IsExternal=yes", isExternal},
        {"IsExternal!=yes", isExternal},
        {"IsExternal=false", ""},
        {"IsExternal~yes", ""},
        {"IsExternal present", ""},
        {"ThermalTransmittance<low", thermal},
        {"ThermalTransmittance=numbers", "By its definition the values of Pset_WallCommon.ThermalTransmittance are "
                                         "numbers, and \"numbers\" isn't among them."},
        {"ThermalTransmittance<0.3", ""},
        {"Status=new", status},
        {"Status=NEW", ""},
        {"FireRating=anything", ""},
        {"Unknown=yes", ""},
    };
    for (const auto& [text, objection] : texts) {
        EXPECT_EQ(Condition(std::string("Pset_WallCommon.").append(text)).objection(false), objection);
    }
    EXPECT_EQ(Condition("Own.Size>2,5").objection(true), "The values of Own.Size are numbers, and \"2,5\" isn't one.");
    EXPECT_EQ(Condition("Own.Size>2.5").objection(true), "");
}

} // namespace
} // namespace annotate

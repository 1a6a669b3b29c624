#include "Annotate/StepParameters.h"

#include "Annotate/StepScanner.h"
#include "Annotate/StepValue.h"
#include "Annotate/ValueText.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

/// A letter for the kind and the text of each, in brackets for those below another.
std::string shown(StepParameter parameter) {
    std::string text;
    std::vector<std::pair<StepParameter::Iterator, StepParameter::Iterator>> open;
    const auto show = [&](StepParameter each) {
        text += "$*IRSERBLT"[static_cast<int>(each.kind())];
        text += each.text();
        const bool canHoldMore = each.is(StepParameter::Kind::List) || each.is(StepParameter::Kind::Typed);
        text += canHoldMore ? "(" : " ";
        if (canHoldMore) {
            open.emplace_back(each.begin(), each.end());
        }
    };
    show(parameter);
    while (!open.empty()) {
        auto& [next, end] = open.back();
        if (next == end) {
            text += ") ";
            open.pop_back();
        } else {
            const StepParameter each = *next;
            ++next;
            show(each);
        }
    }
    return text;
}

std::string parsed(const std::string& text) {
    try {
        return shown(StepParameters(text).all());
    } catch (const StepError& error) {
        return error.what();
    }
}

TEST(StepParameters, areATree) {
    const std::pair<std::string, std::string> texts[] = {
        {");", "L() "},
        {"$,*,1,-2.5E3,'a''b;)',.TRUE.,#12,\"0F\");#2=X(", "L($ * I1 R-2.5E3 Sa''b;) ETRUE R12 B0F ) "},
        {" ( ) /* , */ , ((1),(2,3)),IFCX('a')\r\n)", "L(L() L(L(I1 ) L(I2 I3 ) ) TIFCX(Sa ) ) "},
        {"IFCX(IFCY(.T.),()),'')", "L(TIFCX(TIFCY(ET ) L() ) S ) "},
    };
    for (const auto& [text, expected] : texts) {
        EXPECT_EQ(parsed(text), expected) << text;
    }
    const std::string deepText = std::string(100'000, '(') + std::string(100'000, ')') + ",#7,(#8,X((#9))))";
    const StepParameters deep(deepText);
    EXPECT_EQ(deep[1].reference(), 7U);
    EXPECT_EQ(deep[2].references(), (std::vector<std::uint64_t>{8, 9}));
    EXPECT_EQ(shown(deep[3]), "$ ");
}

TEST(StepParameters, refuseWhatIsMalformed) {
    const char* const texts[] = {"",    "1",    "(1)",    "1 2)", "1,)",  ",1)",  "#)",    "'a)", "'a'')", ".)",
                                 ".T)", "\"0)", "\"G\")", "X)",   "X 1)", "(1,)", "/* 1)", "&)",  "#1#2)", "X(1)2)"};
    for (const char* const text : texts) {
        EXPECT_THROW(StepParameters{text}, StepError) << text;
    }
}

TEST(StepParameters, holdValues) {
    const std::pair<std::string, std::string> texts[] = {
        {R"(IFCLABEL('K\X2\00FC\X0\che')))", "IfcLabel K\u00fcche 5"},
        {"ifclengthmeasure(2500.))", "IfcLengthMeasure 2500 4"},
        {"IFCREAL(+1.E-6))", "IfcReal 1e-06 4"},
        {"IFCREAL(100000000000000.))", "IfcReal 100000000000000 4"},
        {"IFCREAL(1.E999))", "IfcReal 1.E999 5"},
        {"IFCINTEGER(-7))", "IfcInteger -7 1"},
        {"IFCINTEGER(3000000000))", "IfcInteger 3000000000 4"},
        {"IFCINTEGER(9007199254740995))", "IfcInteger 9007199254740995 5"},
        {"IFCBOOLEAN(.T.))", "IfcBoolean true 3"},
        {"IFCLOGICAL(.F.))", "IfcLogical false 3"},
        {"IFCLOGICAL(.U.))", "IfcLogical unknown 2"},
        {"IFCCOMPOUNDPLANEANGLEMEASURE((60,10,-12)))", "IfcCompoundPlaneAngleMeasure 60;10;-12 5"},
        {"IFCSOMETHING(IFCLABEL('a')))", "IFCSOMETHING a 5"},
        {"'a')", " a 5"},
        {"$)", "  0"},
    };
    for (const auto& [text, expected] : texts) {
        const StepParameters parameters(text);
        const StepValue value = stepValue(parameters[0]);
        EXPECT_EQ(value.type + ' ' + valueText(value.value) + ' ' + std::to_string(value.value.getIndex()), expected);
    }
}

} // namespace
} // namespace annotate

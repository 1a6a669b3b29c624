#include "Annotate/ExportedValue.h"

#include "Annotate/StepParameters.h"
#include "Annotate/StepString.h"
#include "Annotate/StepWriting.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

using orv::object::Logical;
using orv::object::PropertyValue;

TEST(ExportedValueTest, hasTheTypeOrTheNearestThatTheVersionHas) {
    struct Case {
        IfcVersion version;
        std::string type;
        PropertyValue value;
        std::string expected;
    };
    const std::string longText(256, 'x');
    const std::string longestLabel = "ä" + std::string(254, 'x');
    const std::vector<Case> cases = {
        {IfcVersion::Ifc4, "IfcLabel", "F90", "IFCLABEL('F90')"},
        {IfcVersion::Ifc4, "IfcLabel", 7, "IFCLABEL('7')"},
        {IfcVersion::Ifc4, "IfcLabel", longText, "IFCTEXT('" + longText + "')"},
        {IfcVersion::Ifc4, "IfcLabel", longestLabel, R"(IFCLABEL('\X2\00E4\X0\)" + std::string(254, 'x') + "')"},
        {IfcVersion::Ifc4, "IfcLengthMeasure", 2, "IFCLENGTHMEASURE(2.)"},
        {IfcVersion::Ifc4, "IfcLengthMeasure", "0.24", "IFCLENGTHMEASURE(0.24)"},
        {IfcVersion::Ifc4, "IfcLengthMeasure", "long", "$"},
        {IfcVersion::Ifc4, "IfcInteger", 2.0, "IFCINTEGER(2)"},
        {IfcVersion::Ifc4, "IfcBoolean", "true", "IFCBOOLEAN(.T.)"},
        {IfcVersion::Ifc4, "IfcLogical", Logical::Unknown, "IFCLOGICAL(.U.)"},
        {IfcVersion::Ifc4, "IfcLabel", PropertyValue(), "$"},
        {IfcVersion::Ifc4, "", 0.5, "IFCREAL(0.5)"},
        {IfcVersion::Ifc4, "", "a text", "IFCLABEL('a text')"},
        {IfcVersion::Ifc4, "", false, "IFCBOOLEAN(.F.)"},
        {IfcVersion::Ifc2x3, "IfcDate", "2026-11-25", "IFCLABEL('2026-11-25')"},
        {IfcVersion::Ifc4, "IfcDate", "2026-11-25", "IFCDATE('2026-11-25')"},
        {IfcVersion::Ifc2x3, "IfcNonNegativeLengthMeasure", 1.5, "IFCLENGTHMEASURE(1.5)"},
        {IfcVersion::Ifc2x3, "IfcAreaDensityMeasure", 1.5, "IFCREAL(1.5)"},
        {IfcVersion::Ifc2x3, "IfcPositiveInteger", 3, "IFCINTEGER(3)"},
        {IfcVersion::Ifc4, "IfcURIReference", "a:b", "IFCTEXT('a:b')"},
        {IfcVersion::Ifc4x3, "IfcURIReference", "a:b", "IFCURIREFERENCE('a:b')"},
        {IfcVersion::Ifc4x3, "IfcLanguageId", "de", "IFCLABEL('de')"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(exportedValue(each.version, each.value, each.type), each.expected) << each.type;
    }
    EXPECT_EQ(versionOf("IFC2X3"), IfcVersion::Ifc2x3);
    EXPECT_EQ(versionOf("IFC4"), IfcVersion::Ifc4);
    EXPECT_EQ(versionOf("IFC4X3_ADD2"), IfcVersion::Ifc4x3);
}

TEST(StepWritingTest, writesTextsThatComeBack) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "''"},
        {R"(it's a \)", R"('it''s a \\')"},
        {"Bürö", R"('B\X2\00FC\X0\r\X2\00F6\X0\')"},
        {"€😀ä", R"('\X2\20AC\X0\\X4\0001F600\X0\\X2\00E4\X0\')"},
        {"two\nlines", R"('two\X2\000A\X0\lines')"},
    };
    for (const auto& [text, expected] : cases) {
        const std::string literal = stepString(text);
        EXPECT_EQ(literal, expected);
        EXPECT_EQ(decodeString(std::string_view(literal).substr(1, literal.size() - 2)), text);
    }
    EXPECT_EQ(stepString("K\374che"), R"('K\X2\00FC\X0\che')") << "a byte that is no UTF-8";
}

TEST(StepWritingTest, writesRealsWithAPoint) {
    const std::vector<std::pair<double, std::string>> cases = {
        {0, "0."}, {-2, "-2."}, {0.24, "0.24"}, {1e22, "1.E+22"}, {1.5e-9, "1.5E-09"}, {100000, "1.E+05"}};
    for (const auto& [number, expected] : cases) {
        EXPECT_EQ(stepReal(number), expected);
    }
}

TEST(StepWritingTest, changesAParameterAndNothingElse) {
    StatementParts parts("'a,(b',/* , ) */ #1, (#2,\n#3) ,IFCREAL(1.),\"0A\",$);#9=IFCWALL(");
    EXPECT_EQ(parts[0], "'a,(b'");
    EXPECT_EQ(parts[9], "$");
    EXPECT_EQ(referencesIn(parts[2]), (std::vector<std::uint64_t>{2, 3}));
    parts.set(2, stepReferences({2, 4}));
    parts.set(9, "not there");
    EXPECT_EQ(parts.text(), "'a,(b',/* , ) */ #1,(#2,#4),IFCREAL(1.),\"0A\",$");
    EXPECT_EQ(stepReferences({}), "()");
}

} // namespace
} // namespace annotate

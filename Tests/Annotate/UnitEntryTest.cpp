#include "Annotate/UnitEntry.h"

#include "Annotate/Arguments.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/StepFile.h"
#include "Annotate/ValueText.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;

/// Millimetres, square metres, degrees Celsius, kilograms, euros, boxes of power, W/(m²·K).
const std::string declared =
    "#1=IFCPROJECT('p',$,'P',$,$,$,$,$,#2);#2=IFCUNITASSIGNMENT((#3,#4,#5,#6,#7,#8,#9));"
    "#3=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);#4=IFCSIUNIT(*,.AREAUNIT.,$,.SQUARE_METRE.);"
    "#5=IFCSIUNIT(*,.THERMODYNAMICTEMPERATUREUNIT.,$,.DEGREE_CELSIUS.);#6=IFCSIUNIT(*,.MASSUNIT.,.KILO.,.GRAM.);"
    "#7=IFCMONETARYUNIT('EUR');#8=IFCCONTEXTDEPENDENTUNIT(#1,.POWERUNIT.,'box');"
    "#9=IFCDERIVEDUNIT((#10,#11,#12),.THERMALTRANSMITTANCEUNIT.,$);#10=IFCDERIVEDUNITELEMENT(#13,1);"
    "#11=IFCDERIVEDUNITELEMENT(#14,-1);#12=IFCDERIVEDUNITELEMENT(#15,-2);#13=IFCSIUNIT(*,.POWERUNIT.,$,.WATT.);"
    "#14=IFCSIUNIT(*,.THERMODYNAMICTEMPERATUREUNIT.,$,.KELVIN.);#15=IFCSIUNIT(*,.LENGTHUNIT.,$,.METRE.);";

Definition single(const char* type) {
    Definition definition;
    definition.propertySet = "Set";
    definition.property = "Name";
    definition.valueType = type;
    return definition;
}

class UnitEntryTest : public ::testing::Test {
protected:
    UnitEntryTest() { orv::tests::setContent(file, header + declared + footer); }

    /// The values with a blank between them; or the refusal.
    std::string taken(const Definition& definition, std::vector<PropertyValue> values, const std::string& named = "") {
        try {
            const ModelDetails details = ModelDetails::read(file);
            takeUnits(definition, details.getUnits(), named, values);
        } catch (const RequestError& error) {
            return error.what();
        }
        std::string text;
        for (const PropertyValue& value : values) {
            text.append(text.empty() ? "" : " ").append(valueText(value));
        }
        return text;
    }

    orv::tests::TemporaryDirectory directory;
    const std::filesystem::path file = directory / "a.ifc";
};

TEST_F(UnitEntryTest, turnsNumbersWithAUnitIntoThoseOfTheModel) {
    struct Case {
        const char* type;
        const char* value;
        std::string expected;
    };
    const Case cases[] = {
        {"IfcLengthMeasure", "24", "24"},
        {"IfcLengthMeasure", "24 mm", "24"},
        {"IfcLengthMeasure", "24cm", "240"},
        {"IfcLengthMeasure", "0.3 m", "300"},
        {"IfcLengthMeasure", "-1e2km", "-100000000"},
        {"IfcLengthMeasure", "2 um", "0.002"},
        {"IfcLengthMeasure", "2000 µm", "2"},
        {"IfcLengthMeasure", "2000 \u03bcm", "2"},
        {"IfcLengthMeasure", "3 ft", "914.4"},
        {"IfcLengthMeasure", "1 in", "25.4"},
        {"IfcLengthMeasure", "1 yd", "914.4"},
        {"IfcLengthMeasure", "1 mi", "1609344"},
        {"IfcLengthMeasure", "3 Em", "3e+21"},
        {"IfcLengthMeasure", "3em", "\"em\" isn't known as a unit for Set.Name. The model's unit is mm."},
        {"IfcLengthMeasure", "1 m2", "\"m2\" isn't known as a unit for Set.Name. The model's unit is mm."},
        {"IfcPositiveLengthMeasure", "1 m", "1000"},
        {"IfcAreaMeasure", "5 m2", "5"},
        {"IfcAreaMeasure", "5 m^2", "5"},
        {"IfcAreaMeasure", "5 cm²", "0.0005"},
        {"IfcAreaMeasure", "2 ha", "20000"},
        {"IfcAreaMeasure", "10 ft2", "0.9290304"},
        {"IfcMassMeasure", "500 g", "0.5"},
        {"IfcMassMeasure", "2 t", "2000"},
        {"IfcMassMeasure", "1 lb", "0.45359237"},
        {"IfcThermodynamicTemperatureMeasure", "300 K", "26.85"},
        {"IfcThermodynamicTemperatureMeasure", "20 °C", "20"},
        {"IfcThermodynamicTemperatureMeasure", "20 degC", "20"},
        {"IfcThermalTransmittanceMeasure", "0.24 W/m2K", "0.24"},
        {"IfcThermalTransmittanceMeasure", "0.24 W/(m²·K)", "0.24"},
        {"IfcPowerMeasure", "2 box", "2"},
        {"IfcPowerMeasure", "2 W", "\"W\" isn't known as a unit for Set.Name. The model's unit is box."},
        {"IfcTimeMeasure", "2 h", "The model has no unit for Set.Name. Give it without \"h\"."},
        {"IfcLabel", "24 cm", "24 cm"},
        {"IfcCountMeasure", "24 cm", "24 cm"},
        {"IfcLengthMeasure", "long", "long"},
        {"IfcLengthMeasure", "1,5 m", "1,5 m"},
        {"IfcLengthMeasure", "", ""},
    };
    for (const auto& [type, value, expected] : cases) {
        EXPECT_EQ(taken(single(type), {value}), expected) << type << ' ' << value;
    }
    EXPECT_EQ(taken(single("IfcLengthMeasure"), {"1 m", PropertyValue(), 2}), "1000  2");
}

TEST_F(UnitEntryTest, takesTheUnitNamedForAllNumbers) {
    EXPECT_EQ(taken(single("IfcLengthMeasure"), {1, "2.5", "x"}, "cm"), "10 25 x");
    EXPECT_EQ(taken(single("IfcLengthMeasure"), {1, "2 m"}, "cm"), "Give a number alone with --unit, not \"2 m\".");
    EXPECT_EQ(taken(single("IfcLengthMeasure"), {"x"}, "kg"),
              "\"kg\" isn't known as a unit for Set.Name. The model's unit is mm.");
    EXPECT_EQ(taken(single("IfcLabel"), {"x"}, "cm"), "The model has no unit for Set.Name. Give it without \"cm\".");
    Definition table = single("IfcLengthMeasure");
    table.kind = PropertyKind::Table;
    table.definedValueType = "IfcMassMeasure";
    EXPECT_EQ(taken(table, {1, 2, 3, 4}, "cm=g"), "10 0.002 30 0.004");
    EXPECT_EQ(taken(table, {1, 2, 3, 4}, "1=g"), "1 0.002 3 0.004");
    EXPECT_EQ(taken(table, {1, 2, 3, 4}, "m"), "1000 2 3000 4");
    EXPECT_EQ(taken(table, {"1 m", "2 t"}), "1000 2000");
}

TEST_F(UnitEntryTest, namesTheUnitsOfTheModel) {
    const ModelDetails details = ModelDetails::read(file);
    Definition table = single("IfcLengthMeasure");
    table.kind = PropertyKind::Table;
    const std::tuple<const char*, const char*, const char*> units[] = {
        {"IfcLengthMeasure", "mm", "mm=mm"},
        {"IfcMassMeasure", "kg", "mm=kg"},
        {"IfcPowerMeasure", "box", "mm=box"},
        {"IfcTimeMeasure", "", "mm"},
        {"IfcLabel", "", "mm"},
        {"IfcMonetaryMeasure", "EUR", "mm=EUR"},
    };
    for (const auto& [type, unit, ofTable] : units) {
        EXPECT_EQ(unitOfValues(single(type), details.getUnits()), unit) << type;
        table.definedValueType = type;
        EXPECT_EQ(unitOfValues(table, details.getUnits()), ofTable) << type;
    }
    EXPECT_TRUE(isMeasured(single("IfcMassMeasure")));
    EXPECT_FALSE(isMeasured(single("IfcLabel")) || isMeasured(single("IfcReal")) || isMeasured(table));
}

} // namespace
} // namespace annotate

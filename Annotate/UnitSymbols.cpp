#include "Annotate/UnitSymbols.h"

#include "Annotate/AsciiCase.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace annotate {

namespace {

constexpr SiUnitName siUnits[] = {
    {"AMPERE", "ELECTRICCURRENTUNIT", "A"},
    {"BECQUEREL", "RADIOACTIVITYUNIT", "Bq"},
    {"CANDELA", "LUMINOUSINTENSITYUNIT", "cd"},
    {"COULOMB", "ELECTRICCHARGEUNIT", "C"},
    {"CUBIC_METRE", "VOLUMEUNIT", "m", 3},
    {"DEGREE_CELSIUS", "THERMODYNAMICTEMPERATUREUNIT", "°C", 1, 1, 273.15},
    {"FARAD", "ELECTRICCAPACITANCEUNIT", "F"},
    {"GRAM", "MASSUNIT", "g", 1, 1e-3},
    {"GRAY", "ABSORBEDDOSEUNIT", "Gy"},
    {"HENRY", "INDUCTANCEUNIT", "H"},
    {"HERTZ", "FREQUENCYUNIT", "Hz"},
    {"JOULE", "ENERGYUNIT", "J"},
    {"KELVIN", "THERMODYNAMICTEMPERATUREUNIT", "K"},
    {"LUMEN", "LUMINOUSFLUXUNIT", "lm"},
    {"LUX", "ILLUMINANCEUNIT", "lx"},
    {"METRE", "LENGTHUNIT", "m"},
    {"MOLE", "AMOUNTOFSUBSTANCEUNIT", "mol"},
    {"NEWTON", "FORCEUNIT", "N"},
    {"OHM", "ELECTRICRESISTANCEUNIT", "Ω"},
    {"PASCAL", "PRESSUREUNIT", "Pa"},
    {"RADIAN", "PLANEANGLEUNIT", "rad"},
    {"SECOND", "TIMEUNIT", "s"},
    {"SIEMENS", "ELECTRICCONDUCTANCEUNIT", "S"},
    {"SIEVERT", "DOSEEQUIVALENTUNIT", "Sv"},
    {"SQUARE_METRE", "AREAUNIT", "m", 2},
    {"STERADIAN", "SOLIDANGLEUNIT", "sr"},
    {"TESLA", "MAGNETICFLUXDENSITYUNIT", "T"},
    {"VOLT", "ELECTRICVOLTAGEUNIT", "V"},
    {"WATT", "POWERUNIT", "W"},
    {"WEBER", "MAGNETICFLUXUNIT", "Wb"},
};

constexpr SiPrefix prefixes[] = {
    {"", "", 1},           {"EXA", "E", 1e18},   {"PETA", "P", 1e15},  {"TERA", "T", 1e12}, {"GIGA", "G", 1e9},
    {"MEGA", "M", 1e6},    {"KILO", "k", 1e3},   {"HECTO", "h", 1e2},  {"DECA", "da", 1e1}, {"DECI", "d", 1e-1},
    {"CENTI", "c", 1e-2},  {"MILLI", "m", 1e-3}, {"MICRO", "µ", 1e-6}, {"NANO", "n", 1e-9}, {"PICO", "p", 1e-12},
    {"FEMTO", "f", 1e-15}, {"ATTO", "a", 1e-18},
};

struct NamedSymbol {
    std::string_view name;
    std::string_view symbol;
};

/// Of units outside the SI, by the names that models call them.
constexpr NamedSymbol namedSymbols[] = {
    {"degree", "°"},        {"inch", "in"},         {"foot", "ft"},         {"yard", "yd"},
    {"mile", "mi"},         {"square inch", "in²"}, {"square foot", "ft²"}, {"square yard", "yd²"},
    {"square mile", "mi²"}, {"cubic inch", "in³"},  {"cubic foot", "ft³"},  {"cubic yard", "yd³"},
    {"hectare", "ha"},      {"litre", "L"},         {"liter", "L"},         {"hour", "h"},
    {"day", "d"},           {"ounce", "oz"},        {"pound", "lb"},        {"tonne", "t"},
    {"btu", "Btu"},         {"fahrenheit", "°F"},
};

constexpr NamedSymbol coherentSymbols[] = {
    {"ACCELERATIONUNIT", "m/s²"},
    {"ANGULARVELOCITYUNIT", "rad/s"},
    {"AREADENSITYUNIT", "kg/m²"},
    {"DYNAMICVISCOSITYUNIT", "Pa·s"},
    {"HEATFLUXDENSITYUNIT", "W/m²"},
    {"HEATINGVALUEUNIT", "J/kg"},
    {"INTEGERCOUNTRATEUNIT", "1/s"},
    {"IONCONCENTRATIONUNIT", "kg/m³"},
    {"ISOTHERMALMOISTURECAPACITYUNIT", "m³/kg"},
    {"KINEMATICVISCOSITYUNIT", "m²/s"},
    {"LINEARFORCEUNIT", "N/m"},
    {"LINEARSTIFFNESSUNIT", "N/m"},
    {"LINEARVELOCITYUNIT", "m/s"},
    {"MASSDENSITYUNIT", "kg/m³"},
    {"MASSFLOWRATEUNIT", "kg/s"},
    {"MASSPERLENGTHUNIT", "kg/m"},
    {"MODULUSOFELASTICITYUNIT", "N/m²"},
    {"MODULUSOFSUBGRADEREACTIONUNIT", "N/m³"},
    {"MOISTUREDIFFUSIVITYUNIT", "m³/s"},
    {"MOLECULARWEIGHTUNIT", "kg/mol"},
    {"MOMENTOFINERTIAUNIT", "m⁴"},
    {"PLANARFORCEUNIT", "N/m²"},
    {"ROTATIONALFREQUENCYUNIT", "1/s"},
    {"ROTATIONALMASSUNIT", "kg·m²"},
    {"ROTATIONALSTIFFNESSUNIT", "N·m/rad"},
    {"SECTIONMODULUSUNIT", "m³"},
    {"SHEARMODULUSUNIT", "N/m²"},
    {"SOUNDPOWERUNIT", "W"},
    {"SOUNDPRESSUREUNIT", "Pa"},
    {"SPECIFICHEATCAPACITYUNIT", "J/(kg·K)"},
    {"TEMPERATUREGRADIENTUNIT", "K/m"},
    {"TEMPERATURERATEOFCHANGEUNIT", "K/s"},
    {"THERMALADMITTANCEUNIT", "W/(m²·K)"},
    {"THERMALCONDUCTANCEUNIT", "W/(m·K)"},
    {"THERMALEXPANSIONCOEFFICIENTUNIT", "1/K"},
    {"THERMALRESISTANCEUNIT", "m²·K/W"},
    {"THERMALTRANSMITTANCEUNIT", "W/(m²·K)"},
    {"TORQUEUNIT", "N·m"},
    {"VAPORPERMEABILITYUNIT", "kg/(s·m·Pa)"},
    {"VOLUMETRICFLOWRATEUNIT", "m³/s"},
    {"WARPINGCONSTANTUNIT", "m⁶"},
};

/// The value types whose kinds aren't called as they are.
constexpr NamedSymbol kindsOfTypes[] = {
    {"IfcNonNegativeLengthMeasure", "LENGTHUNIT"},
    {"IfcPositiveLengthMeasure", "LENGTHUNIT"},
    {"IfcPositivePlaneAngleMeasure", "PLANEANGLEUNIT"},
    {"IfcSectionalAreaIntegralMeasure", "SECTIONAREAINTEGRALUNIT"},
    {"IfcThermalConductivityMeasure", "THERMALCONDUCTANCEUNIT"},
};

template <typename Row, std::size_t count>
const Row* rowOf(const Row (&rows)[count], std::string_view name) {
    const auto* const found = std::find_if(std::begin(rows), std::end(rows),
                                           [name](const Row& row) { return equalsInAnyCase(row.name, name); });
    return found == std::end(rows) ? nullptr : found;
}

} // namespace

const SiUnitName* SiUnitName::find(std::string_view name) {
    return rowOf(siUnits, name);
}

std::span<const SiUnitName> SiUnitName::all() {
    return siUnits;
}

const SiPrefix* SiPrefix::find(std::string_view name) {
    return rowOf(prefixes, name);
}

const SiPrefix* prefixOfSymbol(const SiUnitName& unit, std::string_view symbol) {
    const auto* const found = std::find_if(std::begin(prefixes), std::end(prefixes), [&](const SiPrefix& prefix) {
        return raised(std::string(prefix.symbol).append(unit.symbol), unit.power) == symbol;
    });
    return found == std::end(prefixes) ? nullptr : found;
}

std::string symbolOfName(const std::string& name) {
    const NamedSymbol* const found = rowOf(namedSymbols, name);
    return found == nullptr ? name : std::string(found->symbol);
}

std::string_view coherentSymbol(std::string_view kind) {
    const NamedSymbol* const found = rowOf(coherentSymbols, kind);
    return found == nullptr ? std::string_view{} : found->symbol;
}

std::string siSymbol(std::string_view valueType) {
    const std::string kind = unitKind(valueType);
    const auto* const unit = std::find_if(std::begin(siUnits), std::end(siUnits), [&kind](const SiUnitName& each) {
        return each.kind == kind && each.offset == 0;
    });
    if (unit == std::end(siUnits)) {
        return std::string(coherentSymbol(kind));
    }
    const auto* const prefix = // none, or that of kg
        std::find_if(std::begin(prefixes), std::end(prefixes),
                     [unit](const SiPrefix& each) { return each.factor * unit->factor == 1; });
    return raised(std::string(prefix->symbol).append(unit->symbol), unit->power);
}

std::string unitsOfTable(const std::string& defining, const std::string& defined) {
    return defined.empty() ? defining : (defining.empty() ? "1" : defining) + '=' + defined;
}

std::pair<std::string, std::string> unitsInTable(const std::string& units) {
    const std::size_t equals = units.find('=');
    if (equals == std::string::npos) {
        return {units, ""};
    }
    const std::string defining = units.substr(0, equals);
    return {defining == "1" ? "" : defining, units.substr(equals + 1)};
}

std::string raised(std::string_view symbol, int power) {
    constexpr std::array<std::string_view, 10> digits{"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string text(symbol);
    if (power != 1) {
        for (const char digit : std::to_string(power)) {
            text += digit == '-' ? "⁻" : digits.at(static_cast<std::size_t>(digit - '0'));
        }
    }
    return text;
}

std::string unitKind(std::string_view valueType) {
    constexpr std::string_view start = "Ifc";
    constexpr std::string_view end = "Measure";
    if (const NamedSymbol* const found = rowOf(kindsOfTypes, valueType)) {
        return std::string(found->symbol);
    }
    if (!valueType.starts_with(start) || !valueType.ends_with(end)) {
        return {};
    }
    std::string kind(valueType.substr(start.size(), valueType.size() - start.size() - end.size()));
    std::transform(kind.begin(), kind.end(), kind.begin(), toUpper);
    return kind + "UNIT";
}

} // namespace annotate

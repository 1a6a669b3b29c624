#include "Annotate/UnitEntry.h"

#include "Annotate/Arguments.h"
#include "Annotate/UnitSymbols.h"
#include "Annotate/ValueText.h"
#include "FoundationClasses/FcValueType.h"
#include "Host/FieldText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numbers>
#include <optional>

namespace annotate {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;

namespace {

/// A unit beside the SI, by its exact definition.
struct OtherUnit {
    std::string_view kind;
    std::string_view symbol;
    double factor; ///< To the coherent unit of the SI.
};

constexpr double inch = 0.0254;
constexpr double foot = 12 * inch;

constexpr OtherUnit otherUnits[] = {
    {"AREAUNIT", "ft²", foot* foot},
    {"AREAUNIT", "ha", 1e4},
    {"AREAUNIT", "in²", inch* inch},
    {"ENERGYUNIT", "kWh", 3.6e6},
    {"LENGTHUNIT", "ft", foot},
    {"LENGTHUNIT", "in", inch},
    {"LENGTHUNIT", "mi", 5280 * foot},
    {"LENGTHUNIT", "yd", 3 * foot},
    {"LINEARVELOCITYUNIT", "km/h", 1 / 3.6},
    {"LINEARVELOCITYUNIT", "m/min", 1 / 60.0},
    {"LINEARVELOCITYUNIT", "mm/s", 1e-3},
    {"MASSUNIT", "lb", 0.45359237},
    {"MASSUNIT", "t", 1e3},
    {"PLANEANGLEUNIT", "°", std::numbers::pi / 180},
    {"PRESSUREUNIT", "bar", 1e5},
    {"PRESSUREUNIT", "kN/m²", 1e3},
    {"PRESSUREUNIT", "mbar", 1e2},
    {"PRESSUREUNIT", "N/m²", 1},
    {"PRESSUREUNIT", "N/mm²", 1e6},
    {"TIMEUNIT", "d", 86400},
    {"TIMEUNIT", "h", 3600},
    {"TIMEUNIT", "min", 60},
    {"VOLUMEUNIT", "L", 1e-3},
    {"VOLUMEUNIT", "ft³", foot* foot* foot},
    {"VOLUMETRICFLOWRATEUNIT", "L/min", 1e-3 / 60},
    {"VOLUMETRICFLOWRATEUNIT", "L/s", 1e-3},
    {"VOLUMETRICFLOWRATEUNIT", "l/min", 1e-3 / 60},
    {"VOLUMETRICFLOWRATEUNIT", "l/s", 1e-3},
    {"VOLUMETRICFLOWRATEUNIT", "m³/h", 1 / 3600.0},
    {"VOLUMETRICFLOWRATEUNIT", "m³/min", 1 / 60.0},
};

/// The spellings of a symbol made alike: W/m2K is W/(m²·K), um is µm.
std::string spelledAlike(std::string_view symbol) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 12> spellings{
        {{"·", ""},
         {"*", ""},
         {".", ""},
         {"^", ""},
         {" ", ""},
         {"(", ""},
         {")", ""},
         {"2", "²"},
         {"3", "³"},
         {"\u03bc", "\u00b5"}, // Greek, micro
         {"deg", "°"},
         {"\u2126", "\u03a9"}}};            // Ohm, Greek
    constexpr std::string_view micro = "u"; // which no symbol begins with otherwise
    std::string text;
    if (symbol.size() > micro.size() && symbol.starts_with(micro)) {
        text = "µ";
        symbol.remove_prefix(micro.size());
    }
    while (!symbol.empty()) {
        const auto* const found = std::find_if(spellings.begin(), spellings.end(),
                                               [&](const auto& each) { return symbol.starts_with(each.first); });
        text += found == spellings.end() ? symbol.substr(0, 1) : found->second;
        symbol.remove_prefix(found == spellings.end() ? 1 : found->first.size());
    }
    return text;
}

/// The unit of the kind with that symbol, as spelledAlike makes it; nothing if none is known.
std::optional<ModelUnit> unitOfSymbol(std::string_view kind, const std::string& symbol) {
    for (const SiUnitName& unit : SiUnitName::all()) {
        if (const SiPrefix* const prefix = unit.kind == kind ? prefixOfSymbol(unit, symbol) : nullptr) {
            return ModelUnit{symbol, true, std::pow(prefix->factor, unit.power) * unit.factor, unit.offset};
        }
    }
    const auto* const other = std::find_if(std::begin(otherUnits), std::end(otherUnits), [&](const OtherUnit& each) {
        return each.kind == kind && each.symbol == symbol;
    });
    if (other != std::end(otherUnits)) {
        return ModelUnit{symbol, true, other->factor};
    }
    if (spelledAlike(coherentSymbol(kind)) == symbol) {
        return ModelUnit{symbol, true};
    }
    return std::nullopt;
}

/// A number and what stands behind it.
struct Measured {
    double number = 0;
    std::string unit;
};

/// A letter, a sign like ° or %; not what a number in another notation goes on with.
bool mayBeginUnit(char character) {
    const char lower = static_cast<char>(character | 0x20);
    return (lower >= 'a' && lower <= 'z') || character == '%' || (character & 0x80) != 0;
}

/// Nothing if the text isn't a number with or without a unit.
std::optional<Measured> measuredIn(const std::string& text) {
    const std::size_t end = text.find_first_not_of("+-.0123456789eE");
    for (std::size_t length = std::min(end, text.size()); length > 0; --length) { // an e may belong to the unit
        Measured measured;
        if (orv::host::take(text.substr(0, length), measured.number)) {
            const std::size_t begin = std::min(text.find_first_not_of(' ', length), text.size());
            measured.unit = text.substr(begin);
            return measured.unit.empty() || mayBeginUnit(measured.unit.front()) ? std::optional(measured)
                                                                                : std::nullopt;
        }
    }
    return std::nullopt;
}

bool isMeasuredType(std::string_view valueType) {
    const auto* const type = orv::fc::FcValueType::find(valueType);
    return type != nullptr && type->content == orv::fc::FcContent::Real && !unitKind(valueType).empty();
}

/// The unit that the model has for values of the type; null if they aren't measured, or it has none.
const ModelUnit* unitOfType(std::string_view valueType, const ModelUnits& units) {
    const ModelUnit* const unit = isMeasuredType(valueType) ? units.ofType(valueType) : nullptr;
    return unit == nullptr || unit->symbol.empty() ? nullptr : unit;
}

/// Turns a value of the type, in the unit named or its own, into a number of the model's.
void takeUnit(const Definition& definition, std::string_view valueType, const ModelUnits& units,
              const std::string& named, PropertyValue& value) {
    const auto measured = value.isEmpty() ? std::nullopt : measuredIn(valueText(value));
    if (!named.empty() && measured && !measured->unit.empty()) {
        throw RequestError("Give a number alone with --unit, not \"" + valueText(value) + "\".");
    }
    const std::string symbol = !named.empty() ? named : measured && isMeasuredType(valueType) ? measured->unit : "";
    if (symbol.empty()) {
        return;
    }
    const ModelUnit* const unit = unitOfType(valueType, units);
    if (unit == nullptr) {
        throw RequestError("The model has no unit for " + fullName(definition) + ". Give it without \"" + symbol +
                           "\".");
    }
    const bool isModels = spelledAlike(symbol) == spelledAlike(unit->symbol);
    const auto own = isModels ? *unit : unitOfSymbol(unitKind(valueType), spelledAlike(symbol));
    if (!own || (!isModels && !unit->isConvertible)) {
        throw RequestError("\"" + symbol + "\" isn't known as a unit for " + fullName(definition) +
                           ". The model's unit is " + unit->symbol + '.');
    }
    if (measured) {
        value = valueText(isModels ? measured->number : converted(measured->number, *own, *unit));
    }
}

} // namespace

bool isMeasured(const Definition& definition) {
    return definition.kind != PropertyKind::Table && isMeasuredType(definition.valueType);
}

std::string unitOfValues(const Definition& definition, const ModelUnits& units) {
    const auto symbolFor = [&units](std::string_view valueType) {
        const ModelUnit* const unit = unitOfType(valueType, units);
        return unit == nullptr ? std::string() : unit->symbol;
    };
    const bool isTable = definition.kind == PropertyKind::Table;
    return unitsOfTable(symbolFor(definition.valueType), isTable ? symbolFor(definition.definedValueType) : "");
}

std::string takeUnits(const Definition& definition, const ModelUnits& units, const std::string& named,
                      std::vector<PropertyValue>& values) {
    const bool isTable = definition.kind == PropertyKind::Table;
    const auto [first, second] = isTable ? unitsInTable(named) : std::pair(named, std::string());
    for (std::size_t place = 0; place < values.size(); ++place) {
        const bool isDefined = isTable && place % 2 == 1;
        takeUnit(definition, isDefined ? definition.definedValueType : definition.valueType, units,
                 isDefined ? second : first, values[place]);
    }
    return unitOfValues(definition, units);
}

} // namespace annotate

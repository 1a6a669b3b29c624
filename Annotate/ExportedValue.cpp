#include "Annotate/ExportedValue.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/StepWriting.h"
#include "FoundationClasses/FcValue.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace annotate {

using orv::fc::FcContent;
using orv::fc::FcValue;
using orv::fc::FcValueType;
using orv::object::Logical;
using orv::object::PropertyValue;

namespace {

/// A value type that IfcValue doesn't have in all versions, and what stands for it in the others.
struct LimitedType {
    std::string_view name;
    std::optional<IfcVersion> since; ///< Nothing if no version has it.
    std::string_view nearest;        ///< Empty: the simple type that holds such values.
};

constexpr LimitedType limitedTypes[] = {
    {"IfcAreaDensityMeasure", IfcVersion::Ifc4, ""},
    {"IfcBoxAlignment", std::nullopt, ""},
    {"IfcCardinalPointReference", std::nullopt, ""},
    {"IfcDate", IfcVersion::Ifc4, ""},
    {"IfcDateTime", IfcVersion::Ifc4, ""},
    {"IfcDayInMonthNumber", std::nullopt, ""},
    {"IfcDayInWeekNumber", std::nullopt, ""},
    {"IfcDaylightSavingHour", std::nullopt, ""},
    {"IfcDimensionCount", std::nullopt, ""},
    {"IfcDuration", IfcVersion::Ifc4, ""},
    {"IfcFontStyle", std::nullopt, ""},
    {"IfcFontVariant", std::nullopt, ""},
    {"IfcFontWeight", std::nullopt, ""},
    {"IfcGloballyUniqueId", std::nullopt, ""},
    {"IfcHourInDay", std::nullopt, ""},
    {"IfcLanguageId", std::nullopt, ""},
    {"IfcMinuteInHour", std::nullopt, ""},
    {"IfcMonthInYearNumber", std::nullopt, ""},
    {"IfcNonNegativeLengthMeasure", IfcVersion::Ifc4, "IfcLengthMeasure"},
    {"IfcPositiveInteger", IfcVersion::Ifc4, ""},
    {"IfcPresentableText", std::nullopt, "IfcText"},
    {"IfcSecondInMinute", std::nullopt, ""},
    {"IfcSoundPowerLevelMeasure", IfcVersion::Ifc4, ""},
    {"IfcSoundPressureLevelMeasure", IfcVersion::Ifc4, ""},
    {"IfcSpecularExponent", std::nullopt, ""},
    {"IfcSpecularRoughness", std::nullopt, ""},
    {"IfcStrippedOptional", std::nullopt, ""},
    {"IfcTemperatureRateOfChangeMeasure", IfcVersion::Ifc4, ""},
    {"IfcTextAlignment", std::nullopt, ""},
    {"IfcTextDecoration", std::nullopt, ""},
    {"IfcTextFontName", std::nullopt, ""},
    {"IfcTextTransformation", std::nullopt, ""},
    {"IfcTime", IfcVersion::Ifc4, ""},
    {"IfcURIReference", IfcVersion::Ifc4x3, "IfcText"},
    {"IfcWellKnownTextLiteral", std::nullopt, "IfcText"},
    {"IfcYearNumber", std::nullopt, ""},
};

constexpr std::size_t longestLabel = 255; // in characters, of an IfcLabel or an IfcIdentifier

std::string_view simpleType(FcContent content) {
    switch (content) {
    case FcContent::Real:
        return "IfcReal";
    case FcContent::Integer:
        return "IfcInteger";
    case FcContent::Boolean:
        return "IfcBoolean";
    case FcContent::Logical:
        return "IfcLogical";
    default:
        return "IfcLabel";
    }
}

/// The type, or what stands for it in the version.
std::string_view typeIn(IfcVersion version, const FcValueType& type) {
    const std::string_view name = type.name;
    const auto* const limited = std::find_if(std::begin(limitedTypes), std::end(limitedTypes),
                                             [name](const LimitedType& each) { return each.name == name; });
    if (limited == std::end(limitedTypes) || (limited->since && version >= *limited->since)) {
        return name;
    }
    return limited->nearest.empty() ? simpleType(type.content) : limited->nearest;
}

/// The type that holds the value; empty if it holds nothing.
std::string_view typeFor(const PropertyValue& value) {
    if (value.getIf<std::string>() != nullptr) {
        return "IfcLabel";
    }
    if (value.getIf<int>() != nullptr) {
        return "IfcInteger";
    }
    if (value.getIf<bool>() != nullptr) {
        return "IfcBoolean";
    }
    return value.getIf<double>() != nullptr ? "IfcReal" : value.getIf<Logical>() != nullptr ? "IfcLogical" : "";
}

std::string literalOf(const PropertyValue& content, bool isReal) {
    if (const auto* const text = content.getIf<std::string>()) {
        return stepString(*text);
    }
    if (const auto* const real = content.getIf<double>()) {
        return stepReal(*real);
    }
    if (const auto* const integer = content.getIf<int>()) {
        return isReal ? stepReal(*integer) : std::to_string(*integer);
    }
    if (const auto* const boolean = content.getIf<bool>()) {
        return *boolean ? ".T." : ".F.";
    }
    return ".U.";
}

/// In characters.
std::size_t lengthOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xc0) != 0x80; }));
}

} // namespace

IfcVersion versionOf(std::string_view schema) {
    if (schema.starts_with("IFC2X3")) {
        return IfcVersion::Ifc2x3;
    }
    return schema.starts_with("IFC4X") ? IfcVersion::Ifc4x3 : IfcVersion::Ifc4;
}

std::string exportedValue(IfcVersion version, const PropertyValue& value, std::string_view type) {
    const FcValueType* const known = FcValueType::find(type);
    FcValue typed(known);
    typed.updateValueFromPropertyValue(value);
    const PropertyValue content = typed.getAsPropertyValue();
    if (content.isEmpty()) {
        return "$";
    }
    std::string_view name = known == nullptr ? typeFor(content) : typeIn(version, *known);
    const auto* const text = content.getIf<std::string>();
    if ((name == "IfcLabel" || name == "IfcIdentifier") && text != nullptr && lengthOf(*text) > longestLabel) {
        name = "IfcText";
    }
    std::string literal(name);
    std::transform(literal.begin(), literal.end(), literal.begin(), toUpper);
    const bool isReal = known != nullptr && known->content == FcContent::Real;
    return literal.append("(").append(literalOf(content, isReal)).append(")");
}

} // namespace annotate

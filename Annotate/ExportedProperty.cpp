#include "Annotate/ExportedProperty.h"

#include "Annotate/Arguments.h"
#include "Annotate/StepWriting.h"
#include "Annotate/UnitEntry.h"
#include "FoundationClasses/FcValue.h"

#include <algorithm>
#include <iterator>

namespace annotate {

using orv::fc::FcContent;
using orv::fc::FcValue;
using orv::fc::FcValueType;
using orv::host::PropertyEdit;
using orv::object::Logical;
using orv::object::PropertyValue;
using Form = PropertyEdit::Form;

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

std::string_view keywordOf(Form form) {
    switch (form) {
    case Form::Enumerated:
        return "IFCPROPERTYENUMERATEDVALUE";
    case Form::Bounded:
        return "IFCPROPERTYBOUNDEDVALUE";
    case Form::List:
        return "IFCPROPERTYLISTVALUE";
    case Form::Table:
        return "IFCPROPERTYTABLEVALUE";
    default:
        return "IFCPROPERTYSINGLEVALUE";
    }
}

} // namespace

IfcVersion versionOf(std::string_view schema) {
    if (schema.starts_with("IFC2X3")) {
        return IfcVersion::Ifc2x3;
    }
    return schema.starts_with("IFC4X") ? IfcVersion::Ifc4x3 : IfcVersion::Ifc4;
}

std::string PropertyExporter::valueOf(const PropertyValue& value, std::string_view type) const {
    const FcValueType* const known = FcValueType::find(type);
    FcValue typed(known);
    typed.updateValueFromPropertyValue(value);
    const PropertyValue content = typed.getAsPropertyValue();
    if (content.isEmpty()) {
        return "$";
    }
    const std::string_view name = known == nullptr ? typeFor(content) : typeIn(version, *known);
    std::string literal(name);
    std::transform(literal.begin(), literal.end(), literal.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    });
    const bool isReal = known != nullptr && known->content == FcContent::Real;
    return literal.append("(").append(literalOf(content, isReal)).append(")");
}

std::string PropertyExporter::valuesOf(const std::vector<PropertyValue>& values, std::string_view type,
                                       std::size_t first, std::size_t step) const {
    std::string list;
    for (std::size_t place = first; place < values.size(); place += step) {
        list.append(list.empty() ? "(" : ",").append(valueOf(values[place], type));
    }
    return list.empty() ? "$" : list + ')';
}

std::optional<ExportedProperty> PropertyExporter::exported(const PropertyEdit& edit,
                                                           const ModelStatements::Statement& model) {
    const std::string fullName = edit.set + '.' + edit.property;
    const Definition* const definition = orv::ifc::findSchemaDefForProperty(edit.set, edit.property);
    const bool isEnumerated = definition != nullptr && definition->kind == orv::ifc::def::xml::PropertyKind::Enumerated;
    const std::string_view type = definition == nullptr ? std::string_view() : definition->valueType;
    const Form form = isEnumerated ? Form::Enumerated : edit.form;
    std::vector<PropertyValue> values = edit.values;
    try {
        if (definition != nullptr && !edit.unit.empty()) {
            takeUnits(*definition, *units, edit.unit, values);
        }
    } catch (const RequestError& problem) {
        sentences.insert(fullName + " was set in " + edit.unit + " and is left out. " + problem.what());
        return std::nullopt;
    }
    const StatementParts parts(model.text);
    std::string parameters = model.text.empty() ? stepString(edit.property) + ",$" : parts[0] + ',' + parts[1];
    switch (form) {
    case Form::Enumerated:
        parameters += ',' + valuesOf(values, FcValueType::find(type) == nullptr ? "IfcLabel" : type) + ',' +
                      (model.statementClass->kind == StatementKind::EnumeratedValue ? parts[3] : "$");
        break;
    case Form::Bounded:
        values.resize(3);
        parameters += ',' + valueOf(values[1], type) + ',' + valueOf(values[0], type) + ",$";
        if (version != IfcVersion::Ifc2x3) {
            parameters += ',' + valueOf(values[2], type);
        } else if (!values[2].isEmpty()) {
            sentences.insert("The set point of " + fullName + " is left out, as IFC2X3 has none.");
        }
        break;
    case Form::List:
        parameters += ',' + valuesOf(values, type) + ",$";
        break;
    case Form::Table: {
        const std::string_view definedType = definition == nullptr ? std::string_view() : definition->definedValueType;
        parameters += ',' + valuesOf(values, type, 0, 2) + ',' + valuesOf(values, definedType, 1, 2) + ",$,$,$";
        parameters += version == IfcVersion::Ifc2x3 ? "" : ",$";
        break;
    }
    default:
        parameters += ',' + valueOf(values.empty() ? PropertyValue() : values.front(), type) + ",$";
    }
    return ExportedProperty{std::string(keywordOf(form)), std::move(parameters)};
}

} // namespace annotate

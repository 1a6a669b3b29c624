#include "Annotate/StepValue.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepString.h"
#include "Annotate/ValueText.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>

namespace annotate {

using orv::object::Logical;
using orv::object::PropertyValue;

namespace {

using Kind = StepParameter::Kind;

constexpr std::string_view valueTypes[] = {
#define VALUE_TYPE(name, content) #name,
#include "FoundationClasses/FcValueTypes.inc"
#undef VALUE_TYPE
    "IfcBinary",
    "IfcComplexNumber",
    "IfcCompoundPlaneAngleMeasure",
};

/// The type in the spelling of the schema; one that isn't known as the file spells it.
std::string typeName(std::string_view keyword) {
    const auto* const found = std::find_if(std::begin(valueTypes), std::end(valueTypes),
                                           [keyword](std::string_view name) { return equalsInAnyCase(name, keyword); });
    return std::string(found == std::end(valueTypes) ? keyword : *found);
}

/// Nothing if the number is beyond a double.
std::optional<double> realOf(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

PropertyValue numberOf(StepParameter parameter) {
    constexpr double exactIntegers = 9007199254740992.0; // what a double holds without a gap
    const std::optional<double> number = realOf(parameter.text());
    const bool isInteger = parameter.is(Kind::Integer);
    if (!number || (isInteger && (*number > exactIntegers || *number < -exactIntegers))) {
        return std::string(parameter.text());
    }
    const bool isInt =
        isInteger && *number >= std::numeric_limits<int>::min() && *number <= std::numeric_limits<int>::max();
    return isInt ? PropertyValue(static_cast<int>(*number)) : PropertyValue(*number);
}

PropertyValue enumeratorOf(std::string_view name) {
    if (equalsInAnyCase(name, "T")) {
        return true;
    }
    if (equalsInAnyCase(name, "F")) {
        return false;
    }
    return equalsInAnyCase(name, "U") ? PropertyValue(Logical::Unknown) : PropertyValue(std::string(name));
}

PropertyValue simpleValue(StepParameter parameter) {
    switch (parameter.kind()) {
    case Kind::Integer:
    case Kind::Real:
        return numberOf(parameter);
    case Kind::String:
        return decodeString(parameter.text());
    case Kind::Enumeration:
        return enumeratorOf(parameter.text());
    case Kind::Reference:
        return '#' + std::string(parameter.text());
    case Kind::Binary:
        return std::string(parameter.text());
    default:
        return {};
    }
}

/// The value in the innermost brackets of a typed one.
StepParameter untyped(StepParameter parameter) {
    while (parameter.is(Kind::Typed) && !parameter.isEmpty()) {
        parameter = *parameter.begin();
    }
    return parameter;
}

} // namespace

StepValue stepValue(StepParameter parameter) {
    StepValue result;
    if (parameter.is(Kind::Typed)) {
        result.type = typeName(parameter.text());
    }
    const StepParameter content = untyped(parameter);
    if (content.is(Kind::List)) {
        std::string text;
        for (const StepParameter element : content) {
            text.append(text.empty() ? "" : ";").append(valueText(simpleValue(untyped(element))));
        }
        result.value = text;
    } else {
        result.value = simpleValue(content);
    }
    return result;
}

std::optional<double> numberIn(StepParameter parameter) {
    const StepParameter content = untyped(parameter);
    const bool isNumber = content.is(Kind::Integer) || content.is(Kind::Real);
    return isNumber ? realOf(content.text()) : std::nullopt;
}

std::string textIn(StepParameter parameter) {
    const StepParameter content = untyped(parameter);
    if (content.is(Kind::String)) {
        return decodeString(content.text());
    }
    return content.is(Kind::Enumeration) ? std::string(content.text()) : std::string{};
}

} // namespace annotate

#include "FoundationClasses/FcValue.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace orv::fc {

using object::Logical;
using object::PropertyValue;

namespace {

using Given = std::variant<std::monostate, std::string_view, double, int, bool, Logical>;
using Content = std::variant<std::monostate, CompactText, double, int, bool, Logical>;

/// A finite number that the whole text spells with a decimal point.
std::optional<double> pointedReal(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    return isWhole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The text with a point in place of the decimal point of the process's locale.
std::string withPoint(std::string_view text) {
    const std::string_view decimalPoint = std::localeconv()->decimal_point;
    const std::size_t position = text.find(decimalPoint);
    std::string pointed(text);
    return position == std::string_view::npos ? pointed : pointed.replace(position, decimalPoint.size(), 1, '.');
}

/// A finite number that the whole text spells with a point or in the process's locale.
std::optional<double> parseReal(std::string_view text) {
    const auto number = pointedReal(text);
    return number ? number : pointedReal(withPoint(text));
}

std::string shortestText(double number) {
    constexpr double firstFixed = 1e-5;
    constexpr double firstTooLarge = 1e15;
    if (number == 0) {
        return "0"; // also of a negative zero
    }
    const double size = std::abs(number);
    const auto format =
        size >= firstFixed && size < firstTooLarge ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format);
    return {buffer.data(), end};
}

std::string logicalText(Logical value) {
    switch (value) {
    case Logical::False:
        return "false";
    case Logical::True:
        return "true";
    case Logical::Unknown:
        break;
    }
    return "unknown";
}

/// Of a given or a kept content.
template <typename Content>
std::optional<std::string> textOf(const Content& content) {
    struct Visitor {
        std::optional<std::string> operator()(std::monostate /*none*/) const { return std::nullopt; }
        std::optional<std::string> operator()(std::string_view text) const { return std::string(text); }
        std::optional<std::string> operator()(double number) const { return shortestText(number); }
        std::optional<std::string> operator()(int number) const { return std::to_string(number); }
        std::optional<std::string> operator()(bool value) const { return value ? "true" : "false"; }
        std::optional<std::string> operator()(Logical value) const { return logicalText(value); }
    };
    return std::visit(Visitor{}, content);
}

std::optional<double> realOf(const Given& content) {
    if (const auto* number = std::get_if<double>(&content)) {
        return std::isfinite(*number) ? std::optional(*number) : std::nullopt;
    }
    if (const auto* number = std::get_if<int>(&content)) {
        return *number;
    }
    const auto* text = std::get_if<std::string_view>(&content);
    return text != nullptr ? parseReal(*text) : std::nullopt;
}

std::optional<int> integerOf(const Given& content) {
    using Limits = std::numeric_limits<int>;
    const auto number = realOf(content);
    const bool isInteger =
        number && *number >= Limits::min() && *number <= Limits::max() && std::trunc(*number) == *number;
    return isInteger ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<Logical> logicalOf(const Given& content) {
    if (const auto* value = std::get_if<Logical>(&content)) {
        return *value;
    }
    if (const auto* value = std::get_if<bool>(&content)) {
        return *value ? Logical::True : Logical::False;
    }
    const auto* text = std::get_if<std::string_view>(&content);
    for (const Logical value : {Logical::False, Logical::True, Logical::Unknown}) {
        if (text != nullptr && *text == logicalText(value)) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<bool> booleanOf(const Given& content) {
    const auto value = logicalOf(content);
    return value && *value != Logical::Unknown ? std::optional(*value == Logical::True) : std::nullopt;
}

template <typename T>
Content contentOrNone(std::optional<T> value) {
    return value ? Content(*value) : Content();
}

Content kept(const Given& given) {
    const auto keep = [](auto held) -> Content {
        if constexpr (std::is_same_v<decltype(held), std::string_view>) {
            return CompactText(held);
        } else {
            return held;
        }
    };
    return std::visit(keep, given);
}

Content asText(const Given& given) {
    if (std::holds_alternative<std::string_view>(given)) {
        return kept(given);
    }
    const auto* const number = std::get_if<double>(&given);
    const auto text = number == nullptr || std::isfinite(*number) ? textOf(given) : std::nullopt;
    return text ? Content(CompactText(*text)) : Content();
}

/// Whether the text is a number in plain decimal digits which a real keeps to the last: it is the shortest text of the
/// real, but for zeros at the end of the fraction.
bool isPlainDecimal(std::string text, double number) {
    if (text.find('.') != std::string::npos && text.back() != '.') {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    std::array<char, 512> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed);
    return error == std::errc() && text == std::string_view(buffer.data(), end);
}

/// What a value without a type makes of the content.
Content untyped(const Given& given) {
    const auto number = realOf(given);
    if (std::holds_alternative<double>(given)) {
        return contentOrNone(number);
    }
    const auto* const text = std::get_if<std::string_view>(&given);
    const bool isNumber = number && (text == nullptr || isPlainDecimal(withPoint(*text), *number));
    return isNumber ? contentOrNone(number) : kept(given);
}

Content converted(const Given& given, FcContent wanted) {
    switch (wanted) {
    case FcContent::Text:
        return asText(given);
    case FcContent::Real:
        return contentOrNone(realOf(given));
    case FcContent::Integer:
        return contentOrNone(integerOf(given));
    case FcContent::Boolean:
        return contentOrNone(booleanOf(given));
    case FcContent::Logical:
        return contentOrNone(logicalOf(given));
    }
    return {};
}

struct GivenByAlternative {
    Given operator()(std::monostate /*none*/) const { return {}; }

    template <typename T>
    Given operator()(const T& held) const {
        return held;
    }

    template <typename T>
    Given operator()(const std::optional<T>& held) const {
        return held ? Given(*held) : Given();
    }
};

struct AlternativeOfContent {
    PropertyValue operator()(std::monostate /*none*/) const { return {}; }
    PropertyValue operator()(const CompactText& text) const { return std::string(std::string_view(text)); }
    PropertyValue operator()(Logical value) const {
        return value == Logical::Unknown ? PropertyValue(value) : PropertyValue(value == Logical::True);
    }

    template <typename T>
    PropertyValue operator()(T held) const {
        return held;
    }
};

} // namespace

static_assert(sizeof(FcValue) <= 2 * sizeof(double), "a model has millions of them");

FcValue::FcValue(FcSimpleValue value)
    : content(CompactText(value.label.text)), typeNumber(FcValueType::numberOf(FcValueType::find("IfcLabel"))) {}

bool FcValue::setValueOnTypeFromString(const std::string& text) {
    take(std::string_view(text));
    return hasContent();
}

void FcValue::updateValueFromPropertyValue(const PropertyValue& value) {
    take(value.visit(GivenByAlternative()));
}

void FcValue::take(const Given& given) {
    const FcValueType* const type = getType();
    content = type == nullptr ? untyped(given) : converted(given, type->content);
}

PropertyValue FcValue::getAsPropertyValue() const {
    return std::visit(AlternativeOfContent(), content);
}

std::optional<std::string> FcValue::getAsString(bool withType) const {
    auto text = textOf(content);
    const FcValueType* const type = getType();
    if (text && withType && type != nullptr) {
        text = std::string(type->name) + '(' + *text + ')';
    }
    return text;
}

} // namespace orv::fc

#include "FoundationClasses/FcValue.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

namespace orv::fc {

using object::Logical;
using object::PropertyValue;

namespace {

using Content = std::variant<std::monostate, std::string, double, int, bool, Logical>;

/// A finite number that the whole text spells with a decimal point.
std::optional<double> pointedReal(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    return isWhole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The text with a point in place of the decimal point of the process's locale.
std::string withPoint(std::string text) {
    const std::string_view decimalPoint = std::localeconv()->decimal_point;
    const std::size_t position = text.find(decimalPoint);
    return position == std::string::npos ? text : text.replace(position, decimalPoint.size(), 1, '.');
}

/// A finite number that the whole text spells with a point or in the process's locale.
std::optional<double> parseReal(const std::string& text) {
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

std::optional<std::string> textOf(const Content& content) {
    struct Visitor {
        std::optional<std::string> operator()(std::monostate /*none*/) const { return std::nullopt; }
        std::optional<std::string> operator()(const std::string& text) const { return text; }
        std::optional<std::string> operator()(double number) const { return shortestText(number); }
        std::optional<std::string> operator()(int number) const { return std::to_string(number); }
        std::optional<std::string> operator()(bool value) const { return value ? "true" : "false"; }
        std::optional<std::string> operator()(Logical value) const { return logicalText(value); }
    };
    return std::visit(Visitor{}, content);
}

std::optional<double> realOf(const Content& content) {
    if (const auto* number = std::get_if<double>(&content)) {
        return std::isfinite(*number) ? std::optional(*number) : std::nullopt;
    }
    if (const auto* number = std::get_if<int>(&content)) {
        return *number;
    }
    const auto* text = std::get_if<std::string>(&content);
    return text != nullptr ? parseReal(*text) : std::nullopt;
}

std::optional<int> integerOf(const Content& content) {
    using Limits = std::numeric_limits<int>;
    const auto number = realOf(content);
    const bool isInteger =
        number && *number >= Limits::min() && *number <= Limits::max() && std::trunc(*number) == *number;
    return isInteger ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<Logical> logicalOf(const Content& content) {
    if (const auto* value = std::get_if<Logical>(&content)) {
        return *value;
    }
    if (const auto* value = std::get_if<bool>(&content)) {
        return *value ? Logical::True : Logical::False;
    }
    const auto* text = std::get_if<std::string>(&content);
    for (const Logical value : {Logical::False, Logical::True, Logical::Unknown}) {
        if (text != nullptr && *text == logicalText(value)) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<bool> booleanOf(const Content& content) {
    const auto value = logicalOf(content);
    return value && *value != Logical::Unknown ? std::optional(*value == Logical::True) : std::nullopt;
}

template <typename T>
Content contentOrNone(std::optional<T> value) {
    return value ? Content(*std::move(value)) : Content();
}

Content asText(Content given) {
    if (std::holds_alternative<std::string>(given)) {
        return given;
    }
    const auto* const number = std::get_if<double>(&given);
    return number == nullptr || std::isfinite(*number) ? contentOrNone(textOf(given)) : Content();
}

/// Whether the text is digits, with a sign ahead and a point and digits behind if need be, and no needless zero ahead.
bool isPlainDecimal(std::string_view text) {
    constexpr std::string_view digits = "0123456789";
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    const std::string_view whole = text.substr(0, text.find_first_not_of(digits));
    const std::string_view rest = text.substr(whole.size());
    const bool isWhole = whole == "0" || (!whole.empty() && whole.front() != '0');
    return isWhole && (rest.empty() || (rest.front() == '.' && rest.size() > 1 &&
                                        rest.find_first_not_of(digits, 1) == std::string_view::npos));
}

/// What a value without a type makes of the content.
Content untyped(Content given) {
    const auto* const text = std::get_if<std::string>(&given);
    const auto number = text == nullptr || isPlainDecimal(withPoint(*text)) ? realOf(given) : std::nullopt;
    return number || std::holds_alternative<double>(given) ? contentOrNone(number) : std::move(given);
}

Content converted(Content given, FcContent wanted) {
    switch (wanted) {
    case FcContent::Text:
        return asText(std::move(given));
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

struct ContentOfAlternative {
    Content operator()(std::monostate /*none*/) const { return {}; }

    template <typename T>
    Content operator()(const T& held) const {
        return held;
    }

    template <typename T>
    Content operator()(const std::optional<T>& held) const {
        return contentOrNone(held);
    }
};

} // namespace

FcValue::FcValue(FcSimpleValue value) : type(FcValueType::find("IfcLabel")), content(std::move(value.label.text)) {}

bool FcValue::setValueOnTypeFromString(const std::string& text) {
    take(text);
    return hasContent();
}

void FcValue::updateValueFromPropertyValue(const PropertyValue& value) {
    take(value.visit(ContentOfAlternative()));
}

void FcValue::take(Content given) {
    content = type == nullptr ? untyped(std::move(given)) : converted(std::move(given), type->content);
}

PropertyValue FcValue::getAsPropertyValue() const {
    return std::visit(
        [](const auto& held) -> PropertyValue {
            if constexpr (std::is_same_v<decltype(held), const std::monostate&>) {
                return {};
            } else if constexpr (std::is_same_v<decltype(held), const Logical&>) {
                return held == Logical::Unknown ? PropertyValue(held) : PropertyValue(held == Logical::True);
            } else {
                return held;
            }
        },
        content);
}

std::optional<std::string> FcValue::getAsString(bool withType) const {
    auto text = textOf(content);
    if (text && withType && type != nullptr) {
        text = std::string(type->name) + '(' + *text + ')';
    }
    return text;
}

} // namespace orv::fc

#pragma once

#include "Id/Guid.h"
#include "OrvExport.h"

#include <array>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>

/// The texts of single values of a record: those of XML Schema (xs:boolean, xs:int, xs:double; dates
/// and times in TimeText.h), whatever the locale. textOf returns a value's text. take reads one, which may have blanks
/// around it, and returns whether it could; if not, or if the value would be another than the text says, the value
/// stays as it was.
namespace orv::host {

/// An enumerator and its text. A host declares the names of an enumeration beside it, in its namespace:
///
///     enum class Urgency { Low, Normal };
///     constexpr auto namesOf(Urgency) {
///         return std::array{orv::host::Name{Urgency::Low, "low"}, orv::host::Name{Urgency::Normal, "normal"}};
///     }
template <typename Enumeration>
struct Name {
    Enumeration value;
    const char* text;
};

// Which Clang 14 doesn't deduce itself.
template <typename Enumeration>
Name(Enumeration, const char*) -> Name<Enumeration>;

template <typename T>
concept NamedEnumeration = std::is_enum_v<T> && requires(T value) {
    namesOf(value).begin()->text;
};

template <typename T>
concept Integer = std::integral<T> &&(sizeof(T) == 4 || sizeof(T) == 8) && !std::same_as<T, char32_t> &&
                  !std::same_as<T, wchar_t>;

/// The text without the blanks of XML around it.
ORV_HOST_EXPORT std::string_view trimmed(std::string_view text);

/// "true" or "false"; "1" and "0" are taken as well.
/// @{
ORV_HOST_EXPORT std::string textOf(bool value);
ORV_HOST_EXPORT bool take(std::string_view text, bool& value);
/// @}

/// The shortest text that reads back as the same number; "INF", "-INF" and "NaN".
/// @{
ORV_HOST_EXPORT std::string textOf(double value);
ORV_HOST_EXPORT bool take(std::string_view text, double& value);
/// @}

/// The text itself, with its blanks.
/// @{
inline std::string textOf(const std::string& value) {
    return value;
}
inline bool take(std::string_view text, std::string& value) {
    value = text;
    return true;
}
/// @}

/// The GlobalId; a UUID is taken as well.
/// @{
ORV_HOST_EXPORT std::string textOf(const Guid& value);
ORV_HOST_EXPORT bool take(std::string_view text, Guid& value);
/// @}

/// Decimal digits; a plus sign is taken as well.
/// @{
template <Integer T>
std::string textOf(T value) {
    return std::to_string(value);
}

template <Integer T>
bool take(std::string_view text, T& value) {
    text = trimmed(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    T taken = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), taken);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    value = isWhole ? taken : value;
    return isWhole;
}
/// @}

/// A value without a name has its number as text, which isn't taken.
template <NamedEnumeration T>
std::string textOf(T value) {
    for (const auto& name : namesOf(value)) {
        if (name.value == value) {
            return name.text;
        }
    }
    return std::to_string(static_cast<std::int64_t>(value));
}

template <NamedEnumeration T>
bool take(std::string_view text, T& value) {
    for (const auto& name : namesOf(value)) {
        if (text == name.text || trimmed(text) == name.text) {
            value = name.value;
            return true;
        }
    }
    return false;
}

} // namespace orv::host

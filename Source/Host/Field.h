#pragma once

#include "Host/FieldText.h"
#include "Host/TimeText.h"

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv::host {

template <typename T>
concept SingleValue = requires(const T value, T& taken) {
    { textOf(value) } -> std::same_as<std::string>;
    { take(std::string_view(), taken) } -> std::same_as<bool>;
}
&&!std::is_const_v<T>;

/// How a field's value stands in the file: as the texts of elements that bear the field's name. For other
/// types nothing is defined, so that the assertion in field is the compiler's only message.
template <typename T>
struct FieldForm {
    static constexpr bool isKnown = false;

    /// Appends the texts of the value.
    static void appendTexts(const T& value, std::vector<std::string>& texts);

    /// Makes the texts the value again. Returns whether that could be done; if not, the value stays as it was.
    static bool take(const std::vector<std::string>& texts, T& value);
};

template <SingleValue T>
struct FieldForm<T> {
    static constexpr bool isKnown = true;

    static void appendTexts(const T& value, std::vector<std::string>& texts) { texts.push_back(textOf(value)); }

    /// Takes the last text. No text leaves the value as it is.
    static bool take(const std::vector<std::string>& texts, T& value) {
        return texts.empty() || host::take(std::string_view(texts.back()), value);
    }
};

/// No text is no value.
template <SingleValue T>
struct FieldForm<std::optional<T>> {
    static constexpr bool isKnown = true;

    static void appendTexts(const std::optional<T>& value, std::vector<std::string>& texts) {
        if (value) {
            texts.push_back(textOf(*value));
        }
    }

    static bool take(const std::vector<std::string>& texts, std::optional<T>& value) {
        std::optional<T> taken;
        if (!texts.empty() && !host::take(std::string_view(texts.back()), taken.emplace())) {
            return false;
        }
        value = std::move(taken);
        return true;
    }
};

/// A text for each value. They are taken together or not at all.
template <SingleValue T>
struct FieldForm<std::vector<T>> {
    static constexpr bool isKnown = true;

    static void appendTexts(const std::vector<T>& values, std::vector<std::string>& texts) {
        texts.reserve(texts.size() + values.size());
        for (const T& value : values) {
            texts.push_back(textOf(value));
        }
    }

    static bool take(const std::vector<std::string>& texts, std::vector<T>& values) {
        std::vector<T> taken;
        for (const std::string& text : texts) {
            T value{};
            if (!host::take(std::string_view(text), value)) {
                return false;
            }
            taken.push_back(std::move(value));
        }
        values = std::move(taken);
        return true;
    }
};

/// A field of a kind of record.
template <typename Kind, typename T>
struct Field {
    const char* name;
    T Kind::*member;
};

/// Declares a field: the name of its element in the file, and the member.
template <typename Kind, typename T>
constexpr Field<Kind, T> field(const char* name, T Kind::*member) {
    static_assert(!std::is_enum_v<T> || FieldForm<T>::isKnown,
                  "An enumeration is a field if namesOf(value) is declared beside it: see Host/FieldText.h.");
    static_assert(
        std::is_enum_v<T> || FieldForm<T>::isKnown,
        "A field is a bool, an integer of 32 or 64 bits, a double, a std::string, a Guid, an enumeration with "
        "names, a year_month_day, a time of system_clock, or a std::optional or std::vector of one of these.");
    return {name, member};
}

} // namespace orv::host

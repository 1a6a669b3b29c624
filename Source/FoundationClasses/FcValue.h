#pragma once

#include "FoundationClasses/CompactText.h"
#include "FoundationClasses/FcValueType.h"
#include "Object/PropertyValue.h"
#include "OrvExport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace orv::fc {

/// A text of the type IfcLabel.
class FcLabel {
public:
    /// Of any text in UTF-8, the empty one included.
    explicit FcLabel(std::string label) : text(std::move(label)) {}

    std::string text;
};

/// One of the simple types; those that are built from outside are labels.
class FcSimpleValue {
public:
    /// Holds the label.
    explicit FcSimpleValue(FcLabel content) : label(std::move(content)) {}

    FcLabel label;
};

/// A value of a property: a content, or none, under a type, or none.
///
/// The type decides what the value takes. It takes what converts without loss of meaning: any number into a real, a
/// number without a fraction into an integer, every value into a text, the words true and false into a boolean, unknown
/// as well into a logical. Numbers in texts are decimal, with a point or with the decimal point of the process's locale
/// (LC_NUMERIC); infinities and NaN are none, and no type takes them as numbers. A value without a type takes what it
/// is given: a number as a real, as well as a text that is a plain decimal number of which a real keeps each digit, and
/// any other text as it is ("007", "+5").
/// What isn't taken leaves the value without content, and its type as it was.
class ORV_FOUNDATION_CLASSES_EXPORT FcValue {
public:
    /// A value without content and type.
    FcValue() = default;

    /// A value of that type without content; type is a row of the table, or null for no type.
    explicit FcValue(const FcValueType* valueType) : typeNumber(FcValueType::numberOf(valueType)) {}

    /// A label.
    explicit FcValue(FcSimpleValue value);

    /// Stores what the text says if the type takes it. Returns whether it did.
    bool setValueOnTypeFromString(const std::string& text);

    /// Stores the value, or what an optional holds, if the type takes it.
    void updateValueFromPropertyValue(const object::PropertyValue& value);

    /// Whether it holds anything.
    bool hasContent() const { return content.index() != 0; }

    /// The content as an int, bool, double or text, or as a Logical if it is unknown; the empty value if there is none.
    object::PropertyValue getAsPropertyValue() const;

    /// The text of the content, nothing if there is none. The text of a real is the shortest that reads back as the
    /// same number, without an exponent from 1e-5 up to 1e15, and "0" for a negative zero; that of the others is
    /// "true", "false", "unknown" or decimal digits. If withType is true, the type's name stands before it and brackets
    /// around it, as in "IfcLabel(text)".
    std::optional<std::string> getAsString(bool withType) const;

    /// Null if the value has no type.
    const FcValueType* getType() const { return FcValueType::ofNumber(typeNumber); }

private:
    using Given = std::variant<std::monostate, std::string_view, double, int, bool, object::Logical>;
    using Content = std::variant<std::monostate, CompactText, double, int, bool, object::Logical>;

    void take(const Given& given);

    [[no_unique_address]] Content content; // typeNumber fits into the padding at its end
    std::uint8_t typeNumber = 0;
};

} // namespace orv::fc

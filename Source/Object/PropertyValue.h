#pragma once

#include "Object/Logical.h"
#include "OrvExport.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <typeinfo>
#include <utility>
#include <variant>

namespace orv::object {

/// A typed value: nothing, or one of ten alternatives, told apart by an index.
///
/// | index | type           | index | type                       |
/// |-------|----------------|-------|----------------------------|
/// | 0     | nothing        | 6     | std::optional<int>         |
/// | 1     | int (32 bits)  | 7     | std::optional<Logical>     |
/// | 2     | Logical        | 8     | std::optional<bool>        |
/// | 3     | bool           | 9     | std::optional<double>      |
/// | 4     | double         | 10    | std::optional<std::string> |
/// | 5     | std::string    |       |                            |
///
/// An optional that holds nothing isn't the empty value: its index stays 6 to 10. A moved-from value keeps
/// its alternative, and a moved-from text is empty.
class ORV_OBJECT_EXPORT PropertyValue {
public:
    /// The empty value.
    PropertyValue() = default;

    ///@{
    /// Each alternative converts to a value that holds it.
    PropertyValue(int value) : content(value) {}
    PropertyValue(Logical value) : content(value) {}
    PropertyValue(bool value) : content(value) {}
    PropertyValue(double value) : content(value) {}
    PropertyValue(std::string value) : content(std::move(value)) {}
    PropertyValue(std::optional<int> value) : content(value) {}
    PropertyValue(std::optional<Logical> value) : content(value) {}
    PropertyValue(std::optional<bool> value) : content(value) {}
    PropertyValue(std::optional<double> value) : content(value) {}
    PropertyValue(std::optional<std::string> value) : content(std::move(value)) {}
    ///@}

    /// A text, up to the first NUL; text must not be null.
    PropertyValue(const char* text) : content(std::string(text)) {}

    /// Other pointers would turn into a bool.
    template <typename T>
    requires(!std::same_as<T, char>) PropertyValue(T*)
    = delete;
    PropertyValue(std::nullptr_t) = delete;

    /// The index of the alternative held, 0 for the empty value.
    std::uint8_t getIndex() const noexcept { return static_cast<std::uint8_t>(content.index()); }

    /// Whether this is the empty value.
    bool isEmpty() const noexcept { return getIndex() == 0; }

    /// The type of the alternative held; for the empty value a type that no alternative has.
    const std::type_info& getType() const;

    /// A copy of the alternative T. If another one is held, that is reported, and T{} is returned: 0, false,
    /// 0.0, an empty text, an optional that holds nothing.
    template <typename T>
    T get() const& {
        if (const T* held = getIf<T>()) {
            return *held;
        }
        reportOtherType();
        return T{};
    }

    /// The same of a value that isn't needed any more: T is moved out of it.
    template <typename T>
    T get() && {
        if (T* held = std::get_if<T>(&content)) {
            return std::move(*held);
        }
        reportOtherType();
        return T{};
    }

    /// The alternative T itself, null if another one is held. Good until the value is changed.
    template <typename T>
    const T* getIf() const noexcept {
        return std::get_if<T>(&content);
    }

    /// Calls the visitor with the alternative held, std::monostate for the empty value.
    template <typename Visitor>
    decltype(auto) visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), content);
    }

private:
    static void reportOtherType();

    std::variant<std::monostate, int, Logical, bool, double, std::string, std::optional<int>, std::optional<Logical>,
                 std::optional<bool>, std::optional<double>, std::optional<std::string>>
        content;
};

} // namespace orv::object

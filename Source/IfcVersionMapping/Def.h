#pragma once

#include "OrvExport.h"

#include <cstdint>
#include <string_view>

namespace orv::ifc::def::xml {

/// The form of a property, after which its IFC class is named.
enum class PropertyKind : std::uint8_t { Single, Enumerated, Bounded, List, Table, Reference, Complex };

/// A text of a definition, to be used as a std::string_view.
class ORV_IFC_VERSION_MAPPING_EXPORT DefText {
public:
    /// The empty text.
    constexpr DefText() = default;

    /// A text that ends with a NUL and outlives the definition; not null.
    constexpr DefText(const char* text)
        : own(text), length(static_cast<std::uint32_t>(std::string_view(text).size())) {}

    /// One of those that this library carries, by its place among them: an address would have to be adjusted each time
    /// the library is loaded.
    constexpr DefText(std::uint32_t placeOfCarried, std::uint32_t lengthOfCarried)
        : place(placeOfCarried), length(lengthOfCarried) {}

    /// The characters, which live as long as the definition.
    constexpr operator std::string_view() const {
        return own != nullptr || length == 0 ? std::string_view(own, length) : carried();
    }

    /// Whether it has no characters.
    constexpr bool empty() const { return length == 0; }

    friend constexpr bool operator==(const DefText& a, std::string_view b) { return std::string_view(a) == b; }

private:
    std::string_view carried() const;

    const char* own = nullptr;
    std::uint32_t place = 0;
    std::uint32_t length = 0;
};

/// The definition of a property of a property set. The texts of a published one are as published; those of the
/// definitions that this library carries or was given by addDefinitions live as long as the process.
struct Def {
    DefText propertySet;
    DefText property;
    PropertyKind kind = PropertyKind::Single;

    /// The type of the values, of a table's defining values, or of what a reference refers to; empty if there is none.
    DefText valueType;

    /// The type of a table's defined values, or of the values in what a reference refers to; empty if there is none.
    DefText definedValueType;

    /// The values to choose from, with semicolons between them and without the line ends that some were published
    /// with; empty unless the kind is Enumerated.
    DefText enumerationValues;

    /// Where the definition comes from: the newest version of IFC that has the property, as in "IFC4X3_ADD2", or what
    /// addDefinitions was told of its file.
    DefText source;
};

} // namespace orv::ifc::def::xml

#pragma once

#include <cstdint>
#include <string_view>

namespace orv::ifc::def::xml {

/// The form of a property, after which its IFC class is named.
enum class PropertyKind : std::uint8_t { Single, Enumerated, Bounded, List, Table, Reference, Complex };

/// The published definition of a property of a property set. Its texts are as published; those of the definitions that
/// this library carries live as long as the process.
struct Def {
    std::string_view propertySet;
    std::string_view property;
    PropertyKind kind;

    /// The type of the values, of a table's defining values, or of what a reference refers to; empty if there is none.
    std::string_view valueType;

    /// The type of a table's defined values, or of the values in what a reference refers to; empty if there is none.
    std::string_view definedValueType;

    /// The values to choose from, with semicolons between them and without the line ends that some were published
    /// with; empty unless the kind is Enumerated.
    std::string_view enumerationValues;

    /// The newest version of IFC that has the property, as in "IFC4X3_ADD2".
    std::string_view version;
};

} // namespace orv::ifc::def::xml

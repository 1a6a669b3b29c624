#pragma once

#include "OrvExport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orv {

/// A 128-bit identifier of a model object, with the two spellings that building models use:
///
/// - the GlobalId of IFC files, 22 characters: the 128 bits from the most significant on, in base 64 over the
///   digits, the upper-case letters, the lower-case letters, '_' and '$' (the first character holds two bits
///   and is '0' to '3'; ISO 16739, type IfcGloballyUniqueId);
/// - the UUID of RFC 4122, 36 characters: hexadecimal digits in groups of 8, 4, 4, 4 and 12.
struct ORV_ID_EXPORT Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::uint8_t data4[8] = {};

    /// Takes the identifier that text spells in either form; a UUID's letters may be of either case.
    /// Returns false, and leaves the object as it was, for any other text.
    bool boSet(std::string_view text);

    /// The UUID in lower case if asUuid is true, the GlobalId otherwise. boSet takes both.
    std::string toString(bool asUuid) const;

    /// The characters of the GlobalId, without a string to hold them.
    std::array<char, 22> toGlobalId() const;

    /// A well-spread hash of all sixteen bytes, another one in each process, so that nobody can choose identifiers that
    /// collide.
    std::uint64_t hash() const noexcept;

    bool operator==(const Guid&) const = default;
};

} // namespace orv

/// @cond
template <>
struct std::hash<orv::Guid> {
    std::size_t operator()(const orv::Guid& id) const noexcept { return id.hash(); }
};
/// @endcond

#pragma once

#include "OrvExport.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The escape of what XML can't carry: the seven characters _xHHHH_ with the hexadecimal number of a UTF-16 code unit.
/// A byte from 0x80 on that is no part of valid UTF-8 stands as the lone low surrogate of 0xdc00 plus the byte.
namespace orv::xml {

constexpr std::size_t escapeLength = 7;

/// Each writes an escape to where there is room for it, and returns its end. A character from 0x10000 on takes two.
ORV_XML_EXPORT char* putEscape(char* to, std::uint32_t unit);
char* putEscapedByte(char* to, char byte);
char* putEscapedCharacter(char* to, char32_t codePoint);

/// The number HHHH of the _xHHHH at the position, if there is one; whether an underscore follows isn't looked at.
ORV_XML_EXPORT std::optional<std::uint32_t> escapedUnit(std::string_view text, std::size_t position);

/// Replaces each escape in what stands in text from begin on by the character or byte that it means.
ORV_XML_EXPORT void unescape(std::string& text, std::size_t begin);

} // namespace orv::xml

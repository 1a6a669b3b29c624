#pragma once

#include <string>
#include <string_view>

namespace annotate {

/// The characters between the quotes of a string literal of a STEP file, less the line ends, which do not count there.
std::string withoutLineEnds(std::string_view literal);

/// The text, in UTF-8, that a string literal of a STEP file (ISO 10303-21) stands for; literal is what is
/// between its quotes. Escapes that are malformed stay as they are. A character that cannot be known becomes
/// U+FFFD: half a surrogate pair, a number above U+10FFFF, a letter that its code page doesn't have.
/// Bytes above 0x7f are UTF-8 if that fits the whole literal, and ISO 8859-1 otherwise.
std::string decodeString(std::string_view literal);

} // namespace annotate

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace annotate {

/// The text with every control character, and every byte that is no UTF-8, as a backslash escape (\n, \r, \t or \xHH
/// for each byte), so that a text is one line and can't steer the terminal. A backslash is doubled.
std::string printable(std::string_view text);

/// The text that printable made this of.
std::string fromPrintable(std::string_view printed);

/// The columns of a terminal that a text takes which printable has made safe.
std::size_t widthOf(std::string_view printed);

/// As in "1 edit" or "3 edits"; several are spelled with an s behind one if nothing else is given.
std::string countOf(std::size_t count, const std::string& one, const std::string& several = {});

/// Says what is in the file now, in a sentence. Throws RequestError if that couldn't be said.
void printStored(const std::string& sentence);

} // namespace annotate

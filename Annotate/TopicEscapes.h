#pragma once

#include <string>
#include <string_view>

namespace annotate {

// What the documents of topics can't hold stands in them as orv::xml::File tells, as _xHHHH_.

/// An element with the text; a text of nothing but white space, which the schemas take for none, is all escapes.
std::string escapedElement(std::string_view name, std::string_view text);

/// The text with its escapes undone, if all of them are such as annotate writes; otherwise they are another program's
/// words.
std::string withoutEscapes(std::string text);

/// Whether there is nothing but white space of XML.
bool isBlank(std::string_view text);

} // namespace annotate

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// How names, texts and attributes are spelled in markup.
namespace orv::xml {

/// A text to be written as the character data of an element, so that the parsed data, unescaped, is the text.
struct CharacterData {
    std::string_view text;
};

/// At least the size of what put writes.
std::size_t maximumSize(CharacterData data);

char* put(char* to, CharacterData data);

/// A name as the name of an element, so that the parsed name, unescaped, is the name. Letters of the widely
/// used scripts stay; what some parsers don't take in names, the colon of namespaces included, is escaped.
std::string escapedName(std::string_view name);

/// The name that an element's parsed name stands for.
std::string unescapedName(std::string_view name);

/// The attributes of a tag, each with a blank ahead of it: names and values that alternate up to a null.
std::string attributeMarkup(const char** attributes);

/// Parsed character data, escapes and all, as markup that reads the same wherever it is put.
std::string textMarkup(std::string_view text);

/// The markup without the white space at its ends.
std::string_view trimmed(std::string_view markup);

} // namespace orv::xml

#include "Xml/Spelling.h"

#include "Xml/Buffer.h"
#include "Xml/Escape.h"
#include "Xml/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orv::xml {

namespace {

constexpr std::string_view emptyName = "_x_";
constexpr std::string_view noCharacters = "<![CDATA[]]>";

/// Whether a byte stands for itself in character data wherever it occurs.
constexpr auto plainBytes = [] {
    std::array<bool, 256> plain{};
    for (unsigned byte = 0x20; byte < 0x80; ++byte) {
        plain[byte] = true;
    }
    plain['\t'] = plain['\n'] = true;
    plain['&'] = plain['<'] = plain['>'] = plain['_'] = false;
    return plain;
}();

/// Escapes an underscore before xHHHH if what follows may complete an escape: an underscore, or a character that is
/// itself written as an escape. Texts and names are given whole, so nothing follows their end.
char* putUnderscore(char* to, std::string_view text, std::size_t position, bool (*stays)(char)) {
    const std::string_view next = text.substr(std::min(position + escapeLength - 1, text.size())).substr(0, 1);
    const bool isEscaped = escapedUnit(text, position) && !next.empty() && !stays(next.front());
    return isEscaped ? putEscape(to, '_') : put(to, "_");
}

/// What stands for a character of markup that can't stand for itself everywhere; empty for all others.
std::string_view referenceTo(char character) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return {};
    }
}

/// The text with references for those of the characters that it holds.
std::string withReferences(std::string_view text, std::string_view characters) {
    std::string markup;
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of(characters), text.size());
        markup += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            markup += referenceTo(text.front());
            text.remove_prefix(1);
        }
    }
    return markup;
}

bool isPlain(char byte) {
    return plainBytes[static_cast<unsigned char>(byte)];
}

struct Step {
    char* to;
    std::size_t length; // of what was taken from the text
};

/// Puts the character, or byte, that the text begins with, which is no plain one.
Step putSpecialCharacter(char* to, std::string_view text) {
    if (text.front() == '_') {
        return {putUnderscore(to, text, 0, isPlain), 1};
    }
    // Parsers would take a carriage return as it stands for a line end.
    if (const std::string_view reference = referenceTo(text.front()); !reference.empty()) {
        return {put(to, reference), 1};
    }
    const auto [codePoint, length] = decodeUtf8(text);
    if (length == 0) {
        return {putEscapedByte(to, text.front()), 1};
    }
    // Other languages' readers of lines take these two for line ends.
    if (codePoint == 0x85) {
        return {put(to, "&#x85;"), length};
    }
    if (codePoint == 0x2028) {
        return {put(to, "&#x2028;"), length};
    }
    const bool isXmlCharacter = codePoint >= 0x20 && codePoint != 0xfffe && codePoint != 0xffff;
    return {isXmlCharacter ? put(to, text.substr(0, length)) : putEscapedCharacter(to, codePoint), length};
}

struct Range {
    char32_t first;
    char32_t last;
};

// Letters in the sense of all editions of XML 1.0; the parsers in use go by different ones.
constexpr std::array nameLetters{
    Range{'A', 'Z'},       Range{'a', 'z'},       Range{0x00c0, 0x00d6}, Range{0x00d8, 0x00f6},
    Range{0x00f8, 0x0131}, Range{0x0134, 0x013e}, Range{0x0141, 0x0148}, Range{0x014a, 0x017e},
    Range{0x0388, 0x038a}, Range{0x038e, 0x03a1}, Range{0x03a3, 0x03ce}, // Greek
    Range{0x0401, 0x040c}, Range{0x040e, 0x044f}, Range{0x0451, 0x045c}, // Cyrillic
    Range{0x05d0, 0x05ea},                                               // Hebrew
    Range{0x0621, 0x063a}, Range{0x0641, 0x064a},                        // Arabic
    Range{0x1e00, 0x1e9b}, Range{0x1ea0, 0x1ef9},                        // Vietnamese and others
    Range{0x3041, 0x3094}, Range{0x30a1, 0x30fa},                        // Japanese
    Range{0x4e00, 0x9fa5},                                               // Chinese
    Range{0xac00, 0xd7a3},                                               // Korean
};

bool isNameLetter(char32_t codePoint) {
    return std::any_of(nameLetters.begin(), nameLetters.end(),
                       [codePoint](const Range& range) { return range.first <= codePoint && codePoint <= range.last; });
}

/// A byte that stands for itself in a name wherever it occurs.
bool isNameByte(char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

bool isNameCharacterBehindFirst(char32_t codePoint) {
    return (codePoint >= '0' && codePoint <= '9') || codePoint == '-' || codePoint == '.';
}

} // namespace

std::size_t maximumSize(CharacterData data) {
    constexpr std::size_t shortSize = 256; // below this, room is cheaper than counting
    const std::string_view text = data.text;
    const auto plain = text.size() < shortSize ? 0 : std::count_if(text.begin(), text.end(), isPlain);
    return noCharacters.size() + text.size() + (escapeLength - 1) * (text.size() - static_cast<std::size_t>(plain));
}

char* put(char* to, CharacterData data) {
    if (data.text.empty()) {
        return put(to, noCharacters);
    }
    for (std::string_view rest = data.text; !rest.empty();) {
        const auto* const special = std::find_if_not(rest.begin(), rest.end(), isPlain);
        const auto plain = static_cast<std::size_t>(special - rest.begin());
        to = put(to, rest.substr(0, plain));
        rest.remove_prefix(plain);
        if (!rest.empty()) {
            const Step step = putSpecialCharacter(to, rest);
            to = step.to;
            rest.remove_prefix(step.length);
        }
    }
    return to;
}

std::string escapedName(std::string_view name) {
    if (name.empty()) {
        return std::string(emptyName);
    }
    std::string escaped(escapeLength * name.size(), '\0');
    char* to = escaped.data();
    for (std::size_t position = 0; position < name.size();) {
        const auto [codePoint, length] = decodeUtf8(name.substr(position));
        if (length == 0) {
            to = putEscapedByte(to, name[position]);
            ++position;
            continue;
        }
        if (name == emptyName && position == 0) {
            to = putEscape(to, codePoint);
        } else if (codePoint == '_') {
            to = putUnderscore(to, name, position, isNameByte);
        } else if (isNameLetter(codePoint) || (position > 0 && isNameCharacterBehindFirst(codePoint))) {
            to = put(to, name.substr(position, length));
        } else {
            to = putEscapedCharacter(to, codePoint);
        }
        position += length;
    }
    escaped.resize(static_cast<std::size_t>(to - escaped.data()));
    return escaped;
}

std::string unescapedName(std::string_view name) {
    if (name == emptyName) {
        return {};
    }
    std::string unescaped(name);
    unescape(unescaped, 0);
    return unescaped;
}

std::string attributeMarkup(const char** attributes) {
    std::string markup;
    for (; attributes[0] != nullptr; attributes += 2) {
        markup.append(" ").append(attributes[0]).append("=\"");
        markup.append(withReferences(attributes[1], "&<\"\t\n\r")).append("\"");
    }
    return markup;
}

std::string textMarkup(std::string_view text) {
    return withReferences(text, "&<>\r");
}

std::string_view trimmed(std::string_view markup) {
    constexpr std::string_view whiteSpace = " \t\r\n";
    const std::size_t begin = markup.find_first_not_of(whiteSpace);
    return begin == std::string_view::npos ? std::string_view()
                                           : markup.substr(begin, markup.find_last_not_of(whiteSpace) + 1 - begin);
}

} // namespace orv::xml

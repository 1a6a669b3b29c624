#include "Xml/Escape.h"

#include "Xml/Buffer.h"
#include "Xml/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace orv::xml {

namespace {

// An escape is the seven characters _xHHHH_ with the hexadecimal number of a UTF-16 code unit.
constexpr std::size_t escapeLength = 7;
constexpr std::string_view emptyName = "_x_";
constexpr std::string_view noCharacters = "<![CDATA[]]>";

// A byte from 0x80 on that is no part of valid UTF-8 stands as the lone low surrogate of 0xdc00 plus the byte.
constexpr std::uint32_t byteSurrogates = 0xdc00;

std::optional<std::uint32_t> hexDigitValue(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    return std::nullopt;
}

/// The number HHHH of the _xHHHH at the position, if there is one; whether an underscore follows isn't looked at.
std::optional<std::uint32_t> escapedUnit(std::string_view text, std::size_t position) {
    if (text.size() < position + escapeLength - 1 || text[position] != '_' || text[position + 1] != 'x') {
        return std::nullopt;
    }
    std::uint32_t unit = 0;
    for (const char digit : text.substr(position + 2, 4)) {
        const auto value = hexDigitValue(digit);
        if (!value) {
            return std::nullopt;
        }
        unit = unit * 16 + *value;
    }
    return unit;
}

std::optional<std::uint32_t> completeEscape(std::string_view text, std::size_t position) {
    const auto unit = escapedUnit(text, position);
    const bool isComplete = unit && text.size() >= position + escapeLength && text[position + escapeLength - 1] == '_';
    return isComplete ? unit : std::nullopt;
}

char* putEscape(char* to, std::uint32_t unit) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    to = put(to, "_x");
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
        *to++ = digits[(unit >> shift) & 0xfU];
    }
    *to++ = '_';
    return to;
}

char* putEscapedByte(char* to, char byte) {
    return putEscape(to, byteSurrogates + static_cast<unsigned char>(byte));
}

char* putEscapedCharacter(char* to, char32_t codePoint) {
    if (codePoint < 0x10000) {
        return putEscape(to, codePoint);
    }
    to = putEscape(to, 0xd800 + ((codePoint - 0x10000) >> 10U));
    return putEscape(to, 0xdc00 + ((codePoint - 0x10000) & 0x3ffU));
}

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

bool isPlain(char byte) {
    return plainBytes[static_cast<unsigned char>(byte)];
}

struct Step {
    char* to;
    std::size_t length; // of what was taken from the text
};

/// Puts the character, or byte, that the text begins with, which is no plain one.
Step putSpecialCharacter(char* to, std::string_view text) {
    switch (text.front()) {
    case '&':
        return {put(to, "&amp;"), 1};
    case '<':
        return {put(to, "&lt;"), 1};
    case '>':
        return {put(to, "&gt;"), 1};
    case '\r':
        // A parser would take a carriage return as it stands for a line end.
        return {put(to, "&#13;"), 1};
    case '_':
        return {putUnderscore(to, text, 0, isPlain), 1};
    default:
        break;
    }
    const auto [codePoint, length] = decodeUtf8(text);
    if (length == 0) {
        return {putEscapedByte(to, text.front()), 1};
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

void unescape(std::string& text, std::size_t begin) {
    std::size_t from = text.find("_x", begin);
    if (from == std::string::npos) {
        return;
    }
    // What an escape stands for is shorter than the escape.
    std::size_t to = from;
    std::string character;
    while (from < text.size()) {
        const auto unit = completeEscape(text, from);
        const auto nextUnit = unit && isHighSurrogate(*unit) ? completeEscape(text, from + escapeLength) : std::nullopt;
        character.clear();
        if (nextUnit && isLowSurrogate(*nextUnit)) {
            appendUtf8(character, joinSurrogates(*unit, *nextUnit));
            from += 2 * escapeLength;
        } else if (unit && *unit >= byteSurrogates + 0x80 && *unit <= byteSurrogates + 0xff) {
            character = static_cast<char>(*unit - byteSurrogates);
            from += escapeLength;
        } else if (unit && !isHighSurrogate(*unit) && !isLowSurrogate(*unit)) {
            appendUtf8(character, *unit);
            from += escapeLength;
        } else {
            character = text[from];
            ++from;
        }
        to += character.copy(text.data() + to, character.size());
    }
    text.resize(to);
}

std::string unescapedName(std::string_view name) {
    if (name == emptyName) {
        return {};
    }
    std::string unescaped(name);
    unescape(unescaped, 0);
    return unescaped;
}

std::string_view trimmed(std::string_view markup) {
    const std::size_t begin = markup.find_first_not_of(whiteSpace);
    return begin == std::string_view::npos ? std::string_view()
                                           : markup.substr(begin, markup.find_last_not_of(whiteSpace) + 1 - begin);
}

} // namespace orv::xml

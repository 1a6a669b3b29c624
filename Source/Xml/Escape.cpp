#include "Xml/Escape.h"

#include "Xml/Buffer.h"
#include "Xml/Utf8.h"

namespace orv::xml {

namespace {

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

std::optional<std::uint32_t> completeEscape(std::string_view text, std::size_t position) {
    const auto unit = escapedUnit(text, position);
    const bool isComplete = unit && text.size() >= position + escapeLength && text[position + escapeLength - 1] == '_';
    return isComplete ? unit : std::nullopt;
}

} // namespace

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

} // namespace orv::xml

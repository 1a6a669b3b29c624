#include "Annotate/Terminal.h"

#include "Annotate/Arguments.h"
#include "Annotate/System.h"
#include "Xml/Utf8.h"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <limits>

namespace annotate {

namespace {

void appendHexEscape(std::string& out, char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    out += "\\x";
    out += {digits[value >> 4U], digits[value & 0xfU]};
}

bool isControl(char32_t codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7f && codePoint < 0xa0);
}

} // namespace

std::string printable(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const auto [codePoint, length] = orv::xml::decodeUtf8(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        switch (text.front()) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (length == 0 || isControl(codePoint)) {
                std::for_each(character.begin(), character.end(), [&](char byte) { appendHexEscape(out, byte); });
            } else {
                out += character;
            }
        }
        text.remove_prefix(character.size());
    }
    return out;
}

std::string fromPrintable(std::string_view printed) {
    std::string text;
    while (!printed.empty()) {
        std::size_t length = 1;
        char character = printed.front();
        if (character == '\\' && printed.size() > 1) {
            length = 2;
            character = printed[1] == 'n' ? '\n' : printed[1] == 'r' ? '\r' : printed[1] == 't' ? '\t' : printed[1];
            if (character == 'x' && printed.size() >= 4) {
                unsigned byte = 0;
                std::from_chars(printed.data() + 2, printed.data() + 4, byte, 16);
                character = static_cast<char>(byte);
                length = 4;
            }
        }
        text += character;
        printed.remove_prefix(length);
    }
    return text;
}

std::size_t widthOf(std::string_view printed) {
    std::size_t columns = 0;
    while (!printed.empty()) {
        const auto [codePoint, length] = orv::xml::decodeUtf8(printed);
        columns += columnsOf(codePoint);
        printed.remove_prefix(length);
    }
    return columns;
}

std::string countOf(std::size_t count, const std::string& one, const std::string& several) {
    const std::string ending = several.empty() ? one + 's' : several;
    return std::to_string(count) + ' ' + (count == 1 ? one : ending);
}

void printStored(const std::string& sentence) {
    if (!(std::cout << printable(sentence) << '\n' << std::flush)) {
        throw RequestError(sentence + " The output couldn't be written, though.");
    }
}

} // namespace annotate

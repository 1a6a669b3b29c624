#include "Annotate/HtmlText.h"

#include "Xml/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace annotate {

namespace {

/// Empty for one that stands for itself.
std::string_view entityOf(char32_t character) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return "";
    }
}

char32_t shown(char32_t character) {
    constexpr char32_t pictures = 0x2400;
    constexpr char32_t pictureOfDelete = 0x2421;
    constexpr char32_t replacement = 0xfffd;
    if (character < ' ' && character != '\n' && character != '\t') {
        return pictures + character;
    }
    if (character == 0x7f) {
        return pictureOfDelete;
    }
    const bool isControl = character >= 0x80 && character < 0xa0;
    return isControl ? replacement : character;
}

} // namespace

std::string htmlText(std::string_view text) {
    std::string html;
    html.reserve(text.size());
    while (!text.empty()) {
        if (text.starts_with("\r\n")) {
            text.remove_prefix(1);
        }
        const orv::xml::Utf8Character next = orv::xml::decodeUtf8(text);
        if (const std::string_view entity = entityOf(next.codePoint); !entity.empty()) {
            html += entity;
        } else {
            orv::xml::appendUtf8(html, next.length == 0 ? U'\ufffd' : shown(next.codePoint));
        }
        text.remove_prefix(std::max<std::size_t>(next.length, 1));
    }
    return html;
}

} // namespace annotate

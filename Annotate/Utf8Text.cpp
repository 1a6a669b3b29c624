#include "Annotate/Utf8Text.h"

#include "Xml/Utf8.h"

#include <algorithm>

namespace annotate {

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = orv::xml::decodeUtf8(text).length;
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string textInUtf8(std::string_view text) {
    std::string replaced;
    while (!text.empty()) {
        const orv::xml::Utf8Character next = orv::xml::decodeUtf8(text);
        orv::xml::appendUtf8(replaced, next.length == 0 || next.codePoint == 0 ? U'\ufffd' : next.codePoint);
        text.remove_prefix(std::max<std::size_t>(next.length, 1));
    }
    return replaced;
}

} // namespace annotate

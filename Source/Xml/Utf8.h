#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orv::xml {

/// Whether a UTF-16 code unit is the first half of a pair.
constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}

/// Whether a UTF-16 code unit is the second half of a pair.
constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xdc00 && unit < 0xe000;
}

/// The character of a pair of a high and a low surrogate.
constexpr char32_t joinSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xd800) << 10U) + (low - 0xdc00);
}

/// A character at the start of a text.
struct Utf8Character {
    char32_t codePoint = 0;
    std::size_t length = 0; ///< In bytes; 0 if the text doesn't begin with valid UTF-8 (RFC 3629).
};

/// The character that the text begins with. The text must not be empty.
constexpr Utf8Character decodeUtf8(std::string_view text) {
    const auto byte = [text](std::size_t position) { return static_cast<unsigned char>(text[position]); };
    const auto isContinuation = [&](std::size_t position) {
        return position < text.size() && (byte(position) & 0xc0U) == 0x80U;
    };
    const std::uint32_t lead = byte(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    if (lead >= 0xc2 && lead < 0xe0 && isContinuation(1)) {
        return {((lead & 0x1fU) << 6U) | (byte(1) & 0x3fU), 2};
    }
    if (lead >= 0xe0 && lead < 0xf0 && isContinuation(1) && isContinuation(2)) {
        const char32_t codePoint = ((lead & 0x0fU) << 12U) | ((byte(1) & 0x3fU) << 6U) | (byte(2) & 0x3fU);
        if (codePoint >= 0x800 && !isHighSurrogate(codePoint) && !isLowSurrogate(codePoint)) {
            return {codePoint, 3};
        }
    }
    if (lead >= 0xf0 && lead < 0xf5 && isContinuation(1) && isContinuation(2) && isContinuation(3)) {
        const char32_t codePoint =
            ((lead & 0x07U) << 18U) | ((byte(1) & 0x3fU) << 12U) | ((byte(2) & 0x3fU) << 6U) | (byte(3) & 0x3fU);
        if (codePoint >= 0x10000 && codePoint < 0x110000) {
            return {codePoint, 4};
        }
    }
    return {};
}

/// Appends the character in UTF-8. The code point must be one of Unicode's and no surrogate.
inline void appendUtf8(std::string& out, char32_t codePoint) {
    const auto continuation = [codePoint](unsigned shift) {
        return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3fU));
    };
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += {static_cast<char>(0xc0U | (codePoint >> 6U)), continuation(0)};
    } else if (codePoint < 0x10000) {
        out += {static_cast<char>(0xe0U | (codePoint >> 12U)), continuation(6), continuation(0)};
    } else {
        out += {static_cast<char>(0xf0U | (codePoint >> 18U)), continuation(12), continuation(6), continuation(0)};
    }
}

} // namespace orv::xml

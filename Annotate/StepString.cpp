#include "Annotate/StepString.h"

#include "Annotate/CodePages.h"
#include "Annotate/Utf8Text.h"
#include "Xml/Utf8.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace annotate {

using orv::xml::isHighSurrogate;
using orv::xml::isLowSurrogate;

namespace {

constexpr char32_t replacement = 0xfffd;

constexpr bool isLineEnd(char character) {
    return character == '\n' || character == '\r';
}

void appendCharacter(std::string& text, char32_t character) {
    const bool isUnknown = character > 0x10ffff || isHighSurrogate(character) || isLowSurrogate(character);
    orv::xml::appendUtf8(text, isUnknown ? replacement : character);
}

/// The number that count hexadecimal digits at the beginning of text make.
std::optional<char32_t> hexNumber(std::string_view text, std::size_t count) {
    if (text.size() < count) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + count, number, 16);
    if (error != std::errc{} || end != text.data() + count) {
        return std::nullopt;
    }
    return number;
}

class Decoder {
public:
    explicit Decoder(std::string_view literal) : rest(literal), rawIsUtf8(isUtf8(literal)) {}

    std::string decode() {
        while (!rest.empty()) {
            if (!takeEscape()) {
                takeCharacter();
            }
        }
        return std::move(text);
    }

private:
    bool take(std::string_view prefix) {
        const bool present = rest.starts_with(prefix);
        if (present) {
            rest.remove_prefix(prefix.size());
        }
        return present;
    }

    void takeCharacter() {
        if (rawIsUtf8) {
            text += rest.front();
        } else {
            appendCharacter(text, static_cast<unsigned char>(rest.front()));
        }
        rest.remove_prefix(1);
    }

    /// Returns false, and takes nothing, if rest doesn't begin with a well-formed escape.
    bool takeEscape() {
        if (take("''")) {
            text += '\'';
            return true;
        }
        if (rest.front() != '\\') {
            return false;
        }
        if (take("\\\\")) {
            text += '\\';
            return true;
        }
        return takePage() || takePageLetter() || takeByte() || takeRun("\\X2\\", 4) || takeRun("\\X4\\", 8);
    }

    /// \PA\ to \PI\, which name a part of ISO 8859.
    bool takePage() {
        const bool present =
            rest.size() >= 4 && rest.starts_with("\\P") && rest[2] >= 'A' && rest[2] <= 'I' && rest[3] == '\\';
        if (present) {
            page = rest[2];
            rest.remove_prefix(4);
        }
        return present;
    }

    /// \S\c, the character of the page that lies 128 above c.
    bool takePageLetter() {
        constexpr std::string_view prefix = "\\S\\";
        if (!rest.starts_with(prefix) || rest.size() == prefix.size()) {
            return false;
        }
        const auto letter = static_cast<unsigned char>(rest[prefix.size()]);
        if (letter < ' ' || letter > '~') {
            return false;
        }
        rest.remove_prefix(rest.substr(prefix.size()).starts_with("''") ? prefix.size() + 2 : prefix.size() + 1);
        appendCharacter(text, characterOfPage(page, static_cast<unsigned char>(letter + 128U)));
        return true;
    }

    /// \X\HH, a character of ISO 8859-1.
    bool takeByte() {
        constexpr std::string_view prefix = "\\X\\";
        if (!rest.starts_with(prefix)) {
            return false;
        }
        const auto number = hexNumber(rest.substr(prefix.size()), 2);
        if (!number) {
            return false;
        }
        appendCharacter(text, *number);
        rest.remove_prefix(prefix.size() + 2);
        return true;
    }

    /// Numbers of so many digits between the prefix and \X0\.
    bool takeRun(std::string_view prefix, std::size_t digits) {
        if (!rest.starts_with(prefix)) {
            return false;
        }
        const std::string_view run = rest.substr(prefix.size());
        std::u32string units;
        while (const auto unit = hexNumber(run.substr(units.size() * digits), digits)) {
            units += *unit;
        }
        const std::string_view end = run.substr(units.size() * digits);
        if (units.empty() || !end.starts_with("\\X0\\")) {
            return false;
        }
        rest = end.substr(4);
        appendUnits(units);
        return true;
    }

    void appendUnits(const std::u32string& units) {
        for (std::size_t index = 0; index < units.size(); ++index) {
            char32_t character = units[index];
            if (isHighSurrogate(character) && index + 1 < units.size() && isLowSurrogate(units[index + 1])) {
                ++index;
                character = orv::xml::joinSurrogates(character, units[index]);
            }
            appendCharacter(text, character);
        }
    }

    std::string_view rest;
    bool rawIsUtf8;
    char page = 'A';
    std::string text;
};

} // namespace

std::string withoutLineEnds(std::string_view literal) {
    std::string text(literal);
    std::erase_if(text, isLineEnd);
    return text;
}

std::string decodeString(std::string_view literal) {
    const std::string line = withoutLineEnds(literal);
    return Decoder(line).decode();
}

} // namespace annotate

#include "Annotate/StepWriting.h"

#include "Xml/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace annotate {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

void appendHex(std::string& text, std::uint32_t number, int digits) {
    for (int digit = digits - 1; digit >= 0; --digit) {
        text += hexDigits[(number >> (4 * digit)) & 0xfU];
    }
}

/// Takes a character; a byte that is no UTF-8 stands for itself.
std::uint32_t takeCharacter(std::string_view& text) {
    const auto [codePoint, length] = orv::xml::decodeUtf8(text);
    const std::uint32_t character = length > 0 ? codePoint : static_cast<unsigned char>(text.front());
    text.remove_prefix(length > 0 ? length : 1);
    return character;
}

/// What ends a run of characters that are written by their numbers in so many digits.
void endRun(std::string& literal, int& digits) {
    literal += digits == 0 ? "" : "\\X0\\";
    digits = 0;
}

} // namespace

std::string stepString(std::string_view text) {
    std::string literal = "'";
    int runDigits = 0;
    while (!text.empty()) {
        const std::uint32_t character = takeCharacter(text);
        const int digits = character >= ' ' && character <= '~' ? 0 : character <= 0xffff ? 4 : 8;
        if (digits != runDigits) {
            endRun(literal, runDigits);
            runDigits = digits;
            literal += digits == 0 ? "" : digits == 4 ? "\\X2\\" : "\\X4\\";
        }
        if (digits != 0) {
            appendHex(literal, character, digits);
        } else {
            const char letter = static_cast<char>(character);
            literal.append(letter == '\'' || letter == '\\' ? 2 : 1, letter);
        }
    }
    endRun(literal, runDigits);
    return literal + '\'';
}

std::string stepReal(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    std::string literal(digits.begin(), end);
    const std::size_t exponent = std::min(literal.find('e'), literal.size());
    if (literal.find('.') == std::string::npos) {
        literal.insert(exponent, 1, '.');
    }
    std::replace(literal.begin(), literal.end(), 'e', 'E');
    return literal;
}

std::string stepReferences(const std::vector<std::uint64_t>& ids) {
    std::string list;
    for (const std::uint64_t id : ids) {
        list.append(list.empty() ? "(#" : ",#").append(std::to_string(id));
    }
    return list.empty() ? "()" : list + ')';
}

StatementParts::StatementParts(std::string_view text) {
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t place = 0; place < text.size() && depth >= 0; ++place) {
        const char character = text[place];
        if (character == '\'' || character == '"') {
            place = std::min(text.find(character, place + 1), text.size());
        } else if (text.substr(place).starts_with("/*")) {
            place = std::min(text.find("*/", place + 2), text.size() - 2) + 1;
        } else if (character == '(') {
            ++depth;
        } else if (character == ')') {
            --depth;
        }
        if (depth < 0 || (depth == 0 && character == ',')) {
            parts.emplace_back(text.substr(begin, place - begin));
            begin = place + 1;
        }
    }
}

const std::string& StatementParts::operator[](std::size_t place) const {
    static const std::string missing = "$";
    return place < parts.size() ? parts[place] : missing;
}

void StatementParts::set(std::size_t place, std::string text) {
    if (place < parts.size()) {
        parts[place] = std::move(text);
    }
}

std::string StatementParts::text() const {
    std::string all;
    for (const std::string& part : parts) {
        all.append(&part == &parts.front() ? "" : ",").append(part);
    }
    return all;
}

} // namespace annotate

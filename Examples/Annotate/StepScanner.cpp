#include "Annotate/StepScanner.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace annotate {

namespace {

/// What a character can be a part of.
enum Kind : unsigned char {
    blank = 1,
    digit = 2,
    letter = 4,
    keywordCharacter = 8, ///< '!' begins the keywords that a writer adds of its own, '-' is in ISO-10303-21.
    numberCharacter = 16,
    mark = 32, ///< Ends a statement that is passed over, or begins what can hide its end.
};

constexpr std::array<unsigned char, 256> kindsOfCharacters = [] {
    std::array<unsigned char, 256> kinds{};
    const auto add = [&kinds](std::string_view characters, unsigned kind) {
        for (const char character : characters) {
            kinds[static_cast<unsigned char>(character)] |= static_cast<unsigned char>(kind);
        }
    };
    add(" \t\n\v\f\r", blank);
    add("0123456789", digit | keywordCharacter | numberCharacter);
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", letter | keywordCharacter);
    add("_-!", keywordCharacter);
    add("+-.Ee", numberCharacter);
    add(";'/=", mark);
    return kinds;
}();

constexpr bool is(Kind kind, char character) {
    return (kindsOfCharacters[static_cast<unsigned char>(character)] & kind) != 0;
}

constexpr char toUpper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// Moves next over the characters of the kind and gives them.
std::string_view takeAll(Kind kind, const char*& next, const char* end) {
    const char* const start = next;
    next = std::find_if_not(start, end, [kind](char character) { return is(kind, character); });
    return {start, next};
}

} // namespace

StepScanner::StepScanner(std::string_view text)
    : begin(text.data()), next(text.data()), end(text.data() + text.size()) {}

bool StepScanner::take(char character) {
    const bool present = peek() == character;
    if (present) {
        ++next;
    }
    return present;
}

bool StepScanner::take(std::string_view keyword) {
    skipBlanks();
    const char* const start = next;
    const std::string_view found = takeAll(keywordCharacter, next, end);
    const bool present = std::equal(found.begin(), found.end(), keyword.begin(), keyword.end(),
                                    [](char a, char b) { return toUpper(a) == b; });
    if (!present) {
        next = start;
    }
    return present;
}

void StepScanner::expect(char character) {
    if (!take(character)) {
        fail(std::string{'\'', character, '\''});
    }
}

void StepScanner::expect(std::string_view keyword) {
    if (!take(keyword)) {
        fail(keyword);
    }
}

std::string_view StepScanner::takeKeyword() {
    skipBlanks();
    const std::string_view keyword = takeAll(keywordCharacter, next, end);
    if (keyword.empty()) {
        fail("a keyword");
    }
    return keyword;
}

std::string_view StepScanner::takeInstanceNumber() {
    expect('#');
    const std::string_view digits = takeAll(digit, next, end);
    if (digits.empty()) {
        fail("the number of an instance");
    }
    return digits;
}

std::string_view StepScanner::takeString() {
    expect('\'');
    const char* const start = next;
    for (;;) {
        const char* const quote = std::find(next, end, '\'');
        if (quote == end) {
            failUnfinished("a string", start);
        }
        next = quote + 1;
        if (current() != '\'') {
            return {start, quote};
        }
        ++next;
    }
}

std::string_view StepScanner::takeOptionalString() {
    return take('$') || take('*') ? std::string_view{} : takeString();
}

void StepScanner::skipParameter() {
    std::size_t depth = 0;
    do {
        const std::size_t opened = skipListStarts();
        depth += opened;
        const bool isEmptyList = opened > 0 && peek() == ')';
        if (!isEmptyList) {
            skipSimpleParameter();
        }
        while (depth > 0 && take(')')) {
            --depth;
        }
        if (depth > 0) {
            expect(',');
        }
    } while (depth > 0);
}

void StepScanner::skipStatement() {
    const char* const start = next;
    for (;;) {
        next = std::find_if(next, end, [](char character) { return is(mark, character); });
        switch (current()) {
        case ';':
            ++next;
            return;
        case '\'':
            takeString();
            break;
        case '/':
            if (peek() == '/') {
                fail("a comment");
            }
            break;
        case '=':
            fail("';'");
        default:
            failUnfinished("a statement", start);
        }
    }
}

void StepScanner::fail(std::string_view expected) const {
    if (next == end) {
        throw StepError("is cut off: it ends in line " + lineOf(next));
    }
    throw StepError("has a syntax error in line " + lineOf(next) + ": " + std::string(expected) + " is missing");
}

void StepScanner::skipBlanks() {
    for (;;) {
        takeAll(blank, next, end);
        if (!std::string_view(next, end).starts_with("/*")) {
            return;
        }
        skipComment();
    }
}

void StepScanner::skipComment() {
    const std::string_view rest(next, end);
    const std::size_t close = rest.find("*/", 2);
    if (close == std::string_view::npos) {
        failUnfinished("a comment", next);
    }
    next += close + 2;
}

std::size_t StepScanner::skipListStarts() {
    std::size_t count = 0;
    for (;;) {
        const bool typed = is(letter, peek()) || peek() == '!';
        if (typed) {
            takeKeyword();
            expect('(');
        } else if (!take('(')) {
            return count;
        }
        ++count;
    }
}

void StepScanner::skipSimpleParameter() {
    switch (peek()) {
    case '$':
    case '*':
        ++next;
        break;
    case '\'':
        takeString();
        break;
    case '#':
        takeInstanceNumber();
        break;
    case '.':
        ++next;
        takeKeyword();
        expect('.');
        break;
    case '"':
        ++next;
        while (!take('"')) {
            takeKeyword();
        }
        break;
    default:
        if (takeAll(numberCharacter, next, end).empty()) {
            fail("a parameter");
        }
    }
}

void StepScanner::failUnfinished(std::string_view what, const char* start) const {
    throw StepError("is cut off: it ends inside " + std::string(what) + " that begins in line " + lineOf(start));
}

std::string StepScanner::lineOf(const char* place) const {
    std::size_t line = 1;
    for (const char* character = begin; character != place; ++character) {
        const bool first = *character == '\n' && (character == begin || character[-1] != '\r');
        if (first || *character == '\r') {
            ++line;
        }
    }
    return std::to_string(line);
}

} // namespace annotate

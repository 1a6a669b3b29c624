#include "StepScanner.h"

#include <algorithm>
#include <cstddef>

namespace annotate {

namespace {

constexpr bool isBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr char toUpper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

constexpr bool isLetter(char character) {
    const char upper = toUpper(character);
    return upper >= 'A' && upper <= 'Z';
}

/// '!' begins the keywords that a writer adds of its own; '-' is in ISO-10303-21.
constexpr bool isKeywordCharacter(char character) {
    return isLetter(character) || isDigit(character) || character == '_' || character == '-' || character == '!';
}

constexpr bool isNumberCharacter(char character) {
    return isDigit(character) || character == '+' || character == '-' || character == '.' ||
           toUpper(character) == 'E';
}

/// Whether a statement that is passed over ends at the character, or goes on in another way after it. An equals
/// sign there shows that the ';' is missing.
constexpr bool isMark(char character) {
    return character == ';' || character == '\'' || character == '/' || character == '=';
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
    const std::string_view found = takeWhile(isKeywordCharacter);
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
    const std::string_view keyword = takeWhile(isKeywordCharacter);
    if (keyword.empty()) {
        fail("a keyword");
    }
    return keyword;
}

std::string_view StepScanner::takeInstanceNumber() {
    expect('#');
    const std::string_view digits = takeWhile(isDigit);
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

void StepScanner::skipParameters() {
    for (std::size_t depth = 1; depth > 0;) {
        if (take(')')) {
            --depth;
            continue;
        }
        expect(',');
        const std::size_t opened = skipListStarts();
        depth += opened;
        const bool emptyList = opened > 0 && peek() == ')';
        if (!emptyList) {
            skipSimpleParameter();
        }
    }
}

void StepScanner::skipStatement() {
    const char* const start = next;
    for (;;) {
        next = std::find_if(next, end, isMark);
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
        while (isBlank(current())) {
            ++next;
        }
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

std::string_view StepScanner::takeWhile(bool (*belongs)(char)) {
    const char* const start = next;
    next = std::find_if_not(next, end, belongs);
    return {start, next};
}

std::size_t StepScanner::skipListStarts() {
    std::size_t count = 0;
    for (;;) {
        const bool typed = isLetter(peek());
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
        takeWhile(isKeywordCharacter);
        expect('"');
        break;
    default:
        if (takeWhile(isNumberCharacter).empty()) {
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

#include "Annotate/StepScanner.h"

#include "Annotate/AsciiCase.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace annotate {

namespace {

/// What a character can be a part of.
enum CharacterKind : unsigned char {
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

constexpr bool is(unsigned char kind, char character) {
    return (kindsOfCharacters[static_cast<unsigned char>(character)] & kind) != 0;
}

} // namespace

StepScanner::StepScanner(std::istream& stepFile) : file(stepFile) {
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    readMore();
    if (block.starts_with(byteOrderMark)) {
        next += byteOrderMark.size();
    }
}

/// Moves over the characters of the kind and returns them.
template <unsigned char kind>
std::string_view StepScanner::takeAll() {
    const char* const start = next;
    next = std::find_if_not(start, end, [](char character) { return is(kind, character); });
    if (next == end) {
        requireFileEnd();
    }
    return {start, next};
}

bool StepScanner::take(std::string_view keyword) {
    skipBlanks();
    const char* const start = next;
    const std::string_view found = takeAll<keywordCharacter>();
    const bool present = std::equal(found.begin(), found.end(), keyword.begin(), keyword.end(),
                                    [](char a, char b) { return toUpper(a) == b; });
    if (!present) {
        next = start;
    }
    return present;
}

void StepScanner::expect(std::string_view keyword) {
    if (!take(keyword)) {
        fail(keyword);
    }
}

std::string_view StepScanner::takeKeyword() {
    skipBlanks();
    const std::string_view keyword = takeAll<keywordCharacter>();
    if (keyword.empty()) {
        fail("a keyword");
    }
    return keyword;
}

std::string_view StepScanner::takeInstanceNumber() {
    expect('#');
    const std::string_view number = takeAll<digit>();
    if (number.empty()) {
        fail("the number of an instance");
    }
    return number;
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
        requireFileEnd();
        throw StepError("is cut off: it ends in line " + lineOf(next));
    }
    throw StepError("has a syntax error in line " + lineOf(next) + ": " + std::string(expected) + " is missing");
}

void StepScanner::skipBlanks() {
    for (;;) {
        takeAll<blank>();
        if (end - next == 1) {
            requireFileEnd();
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
        if (takeAll<numberCharacter>().empty()) {
            fail("a parameter");
        }
    }
}

void StepScanner::fail(char expected) const {
    fail(std::string{'\'', expected, '\''});
}

/// Reads on behind what is left of the block.
void StepScanner::readMore() {
    blockPosition = position();
    block.erase(0, static_cast<std::size_t>(next - block.data()));
    const std::size_t left = block.size();
    block.resize(left + std::max(left, blockSize));
    blockSize = std::min(2 * blockSize, maximumBlockSize);
    file.read(block.data() + left, static_cast<std::streamsize>(block.size() - left));
    block.resize(left + static_cast<std::size_t>(file.gcount()));
    isLastBlock = !file;
    next = block.data();
    end = next + block.size();
}

void StepScanner::failUnfinished(std::string_view what, const char* start) const {
    requireFileEnd();
    throw StepError("is cut off: it ends inside " + std::string(what) + " that begins in line " + lineOf(start));
}

/// Reads the file again, so that only who needs a line pays for the counting.
std::string StepScanner::lineOf(const char* place) const {
    std::size_t line = 1;
    int previous = 0;
    file.clear();
    file.seekg(0);
    for (std::uintmax_t left = positionOf(place); left > 0; --left) {
        const int character = file.get();
        if (character == '\r' || (character == '\n' && previous != '\r')) {
            ++line;
        }
        previous = character;
    }
    return std::to_string(line);
}

} // namespace annotate

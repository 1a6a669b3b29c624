#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace annotate {

/// What is wrong with a STEP file and in which line, as the end of a sentence that begins with the file's name.
class StepError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Walks through the text of a STEP file (ISO 10303-21), one token after the other. Each operation first passes over
/// the blanks and comments ahead. Every operation throws StepError where the text isn't as it says, or ends.
class StepScanner {
public:
    /// Begins at the start of text, which outlives the scanner.
    explicit StepScanner(std::string_view text);

    /// Whether character, or keyword in any letter case, comes next; passes over it if so. False at the end
    /// of the text.
    bool take(char character);
    bool take(std::string_view keyword);

    /// The same for what must come next.
    void expect(char character);
    void expect(std::string_view keyword);

    /// Any keyword.
    std::string_view takeKeyword();

    /// The digits of an instance name, those after '#'.
    std::string_view takeInstanceNumber();

    /// What is between the quotes of a string, as the file spells it.
    std::string_view takeString();

    /// The same, or empty text for a parameter that is left out ('$', or '*').
    std::string_view takeOptionalString();

    /// Passes over a parameter of any kind, including all that is nested in it.
    void skipParameter();

    /// Whether the character comes next.
    bool isAt(char character) { return peek() == character; }

    /// Passes over the remainder of a statement, including its ';', and looks at strings and comments only.
    void skipStatement();

    /// Throws that what was expected isn't what comes next.
    [[noreturn]] void fail(std::string_view expected) const;

private:
    char current() const { return next == end ? '\0' : *next; }
    char peek() {
        if (current() <= ' ' || current() == '/') {
            skipBlanks();
        }
        return current();
    }
    void skipBlanks();
    void skipComment();
    std::size_t skipListStarts();
    void skipSimpleParameter();
    [[noreturn]] void failUnfinished(std::string_view what, const char* start) const;
    std::string lineOf(const char* place) const;

    const char* begin;
    const char* next;
    const char* end;
};

} // namespace annotate

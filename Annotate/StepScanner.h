#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace annotate {

/// What is wrong with a STEP file and in which line, as the end of a sentence that begins with the file's name.
class StepError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Walks through a STEP file (ISO 10303-21), one token after the other. Each operation first passes over the blanks and
/// comments ahead. Every operation throws StepError where the text isn't as it says, or ends. There is a block of the
/// file in memory at a time.
class StepScanner {
public:
    /// Begins at the start of the file, which outlives the scanner.
    explicit StepScanner(std::istream& stepFile);
    StepScanner(const StepScanner&) = delete;
    StepScanner& operator=(const StepScanner&) = delete;

    /// Runs part, which scans one part of the file, and returns its result: whether there was one. Only within part
    /// can anything be taken, and only there the texts that are taken are valid. Where the block ends inside the
    /// part, a larger one is read and part is called again, so it has no effects before it has taken all.
    template <typename Part>
    bool takePart(const Part& part) {
        for (;;) {
            const char* const start = next;
            try {
                return part();
            } catch (const BlockEnd&) {
                next = start;
                readMore();
            }
        }
    }

    /// How many bytes of the file have been passed over.
    std::uintmax_t position() const { return positionOf(next); }

    /// Whether character, or keyword in any letter case, comes next; passes over it if so. False at the end
    /// of the text.
    bool take(char character) {
        const bool present = peek() == character;
        if (present) {
            ++next;
        }
        return present;
    }
    bool take(std::string_view keyword);

    /// The same for what must come next.
    void expect(char character) {
        if (!take(character)) {
            fail(character);
        }
    }
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

    /// The text between a position that was passed in the same part and where the scanner is now.
    std::string_view textSince(std::uintmax_t start) const {
        return {block.data() + static_cast<std::size_t>(start - blockPosition), next};
    }

    /// Throws that what was expected isn't what comes next.
    [[noreturn]] void fail(std::string_view expected) const;

private:
    /// Thrown where the block ends and the file doesn't.
    class BlockEnd {};

    char current() const { return next == end ? '\0' : *next; }
    char peek() {
        if (current() <= ' ' || current() == '/') {
            skipBlanks();
        }
        return current();
    }
    template <unsigned char kind>
    std::string_view takeAll();
    void skipBlanks();
    void skipComment();
    std::size_t skipListStarts();
    void skipSimpleParameter();

    [[noreturn]] void fail(char expected) const;
    void readMore();
    void requireFileEnd() const {
        if (!isLastBlock) {
            throw BlockEnd();
        }
    }

    [[noreturn]] void failUnfinished(std::string_view what, const char* start) const;
    std::uintmax_t positionOf(const char* place) const {
        return blockPosition + static_cast<std::uintmax_t>(place - block.data());
    }
    std::string lineOf(const char* place) const;

    // Small files aren't worth a large block.
    static constexpr std::size_t maximumBlockSize = 128UL * 1024;

    std::istream& file;
    std::size_t blockSize = maximumBlockSize / 8;
    std::string block;
    std::uintmax_t blockPosition = 0;
    bool isLastBlock = false;
    const char* next = block.data();
    const char* end = block.data();
};

} // namespace annotate

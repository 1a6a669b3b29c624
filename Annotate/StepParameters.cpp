#include "Annotate/StepParameters.h"

#include "Annotate/StepScanner.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

namespace annotate {

namespace {

using Kind = StepParameters::Kind;

constexpr std::string_view decimalDigits = "0123456789";
constexpr std::string_view binaryDigits = "0123456789ABCDEFabcdef";
constexpr std::string_view numberCharacters = "0123456789+-.Ee";
constexpr std::string_view keywordStarts = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!";
constexpr std::string_view keywordCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-!";

/// Takes the tokens of the text, one after the other.
class Tokens {
public:
    explicit Tokens(std::string_view text) : rest(text) {}

    bool take(char character) {
        skipBlanks();
        const bool present = rest.starts_with(character);
        if (present) {
            rest.remove_prefix(1);
        }
        return present;
    }

    void expect(char character) {
        if (!take(character)) {
            throw StepError(std::string("has a syntax error: '") + character + "' is missing");
        }
    }

    /// Empty text if none comes next.
    std::string_view takeKeyword() {
        skipBlanks();
        const bool present = !rest.empty() && keywordStarts.find(rest.front()) != std::string_view::npos;
        return present ? takeAll(keywordCharacters, {}) : std::string_view{};
    }

    std::string_view takeAll(std::string_view characters, std::string_view what) {
        const std::string_view all = rest.substr(0, rest.find_first_not_of(characters));
        if (all.empty()) {
            throw StepError("has a syntax error: " + std::string(what) + " is missing");
        }
        rest.remove_prefix(all.size());
        return all;
    }

    /// What is before the quote that ends a string; two of them stand for one inside.
    std::string_view takeString() {
        std::size_t end = rest.find('\'');
        while (end != std::string_view::npos && rest.substr(end + 1).starts_with('\'')) {
            end = rest.find('\'', end + 2);
        }
        if (end == std::string_view::npos) {
            throw StepError("has a syntax error: the end of a string is missing");
        }
        const std::string_view text = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        return text;
    }

private:
    void skipBlanks() {
        for (;;) {
            rest.remove_prefix(std::min(rest.find_first_not_of(" \t\n\v\f\r"), rest.size()));
            if (!rest.starts_with("/*")) {
                return;
            }
            rest.remove_prefix(std::min(rest.find("*/", 2), rest.size() - 2) + 2);
        }
    }

    std::string_view rest;
};

bool isReal(std::string_view number) {
    return number.find_first_of(".Ee") != std::string_view::npos;
}

std::pair<Kind, std::string_view> takeSimple(Tokens& tokens) {
    if (tokens.take('$')) {
        return {Kind::Missing, {}};
    }
    if (tokens.take('*')) {
        return {Kind::Derived, {}};
    }
    if (tokens.take('\'')) {
        return {Kind::String, tokens.takeString()};
    }
    if (tokens.take('#')) {
        return {Kind::Reference, tokens.takeAll(decimalDigits, "the number of an instance")};
    }
    if (tokens.take('.')) {
        const std::string_view name = tokens.takeAll(keywordCharacters, "the name of an enumeration");
        tokens.expect('.');
        return {Kind::Enumeration, name};
    }
    if (tokens.take('"')) {
        const std::string_view digitsOfBinary = tokens.takeAll(binaryDigits, "a binary");
        tokens.expect('"');
        return {Kind::Binary, digitsOfBinary};
    }
    const std::string_view number = tokens.takeAll(numberCharacters, "a parameter");
    return {isReal(number) ? Kind::Real : Kind::Integer, number};
}

} // namespace

StepParameters::StepParameters(std::string_view text) {
    Tokens tokens(text);
    std::vector<std::size_t> open; // the places of the lists that aren't closed yet
    const auto begin = [&](Kind kind, std::string_view keyword) {
        open.push_back(nodes.size());
        nodes.push_back({keyword, 1, kind});
    };
    const auto takeEnd = [&] {
        const bool present = tokens.take(')');
        if (present) {
            nodes[open.back()].size = static_cast<std::uint32_t>(nodes.size() - open.back());
            open.pop_back();
        }
        return present;
    };
    begin(Kind::List, {});
    do {
        for (;;) {
            if (tokens.take('(')) {
                begin(Kind::List, {});
            } else if (const std::string_view keyword = tokens.takeKeyword(); !keyword.empty()) {
                tokens.expect('(');
                begin(Kind::Typed, keyword);
            } else {
                break;
            }
        }
        const bool isEmptyList = open.back() + 1 == nodes.size() && takeEnd();
        if (!isEmptyList) {
            const auto [kind, simpleText] = takeSimple(tokens);
            nodes.push_back({simpleText, 1, kind});
        }
        while (!open.empty() && takeEnd()) {}
        if (!open.empty()) {
            tokens.expect(',');
        }
    } while (!open.empty());
}

StepParameter StepParameters::all() const {
    return StepParameter(nodes.data());
}

StepParameter StepParameters::operator[](std::size_t place) const {
    static const Node missing;
    const StepParameter parameters = all();
    auto found = parameters.begin();
    for (; place > 0 && found != parameters.end(); --place) {
        ++found;
    }
    return found == parameters.end() ? StepParameter(&missing) : *found;
}

std::uint64_t StepParameter::reference() const {
    std::uint64_t number = 0;
    if (is(Kind::Reference)) {
        std::from_chars(text().data(), text().data() + text().size(), number);
    }
    return number;
}

std::vector<std::uint64_t> StepParameter::references() const {
    std::vector<std::uint64_t> found;
    for (const StepParameters::Node* each = node; each != node + node->size; ++each) {
        if (each->kind == Kind::Reference) {
            found.push_back(StepParameter(each).reference());
        }
    }
    return found;
}

std::vector<std::uint64_t> referencesIn(const std::string& parameter) {
    return StepParameters(parameter + ')').all().references();
}

} // namespace annotate

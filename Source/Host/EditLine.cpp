#include "Host/EditLine.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace orv::host {

using object::Logical;
using object::PropertyValue;
using Form = PropertyEdit::Form;

namespace {

/// By their numbers.
constexpr std::array<std::string_view, 6> formNames{"single", "enumerated", "bounded", "list", "table", "unset"};
constexpr std::array<std::string_view, 3> boundNames{"lower", "upper", "set-point"};
constexpr std::array<std::string_view, 3> logicalNames{".F.", ".T.", ".U."};

constexpr std::array<std::pair<char, char>, 4> escapes{{{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}}};

constexpr bool isNameLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ||
           letter == '_';
}

std::string quoted(std::string_view text) {
    std::string line = "\"";
    for (const char letter : text) {
        const auto* const escape =
            std::find_if(escapes.begin(), escapes.end(), [letter](const auto& known) { return known.first == letter; });
        if (escape == escapes.end()) {
            line += letter;
        } else {
            line.append("\\") += escape->second;
        }
    }
    return line += '"';
}

std::string nameText(std::string_view name) {
    const bool isBare = !name.empty() && std::all_of(name.begin(), name.end(), isNameLetter);
    return isBare ? std::string(name) : quoted(name);
}

struct ValueText {
    std::string operator()(std::monostate /*none*/) const { return "none"; }
    std::string operator()(int value) const { return textOf(value); }
    std::string operator()(Logical value) const { return std::string(logicalNames[static_cast<std::size_t>(value)]); }
    std::string operator()(bool value) const { return textOf(value); }
    std::string operator()(double value) const {
        const std::string text = textOf(value);
        return text.find_first_not_of("-0123456789") == std::string::npos ? text + ".0" : text;
    }
    std::string operator()(const std::string& value) const { return quoted(value); }

    template <typename T>
    std::string operator()(const std::optional<T>& value) const {
        return value ? (*this)(*value) : "none";
    }
};

/// Reads a line from its beginning, word by word. skip reads nothing if something else comes next; where another
/// operation fails, the line is of no more use.
class LineReader {
public:
    explicit LineReader(std::string_view line) : rest(line) {}

    bool isAtEnd() const { return rest.empty(); }

    bool skip(std::string_view expected) {
        const bool isNext = rest.starts_with(expected);
        rest.remove_prefix(isNext ? expected.size() : 0);
        return isNext;
    }

    /// A word up to a blank or the end.
    std::string_view word() {
        const std::string_view read = rest.substr(0, rest.find(' '));
        rest.remove_prefix(read.size());
        return read;
    }

    bool text(std::string& read) {
        if (!skip("\"")) {
            return false;
        }
        read.clear();
        constexpr auto isSpecial = [](char letter) { return letter == '"' || letter == '\\'; };
        while (true) {
            const auto* const end = std::find_if(rest.begin(), rest.end(), isSpecial);
            read.append(rest.begin(), end);
            rest.remove_prefix(static_cast<std::size_t>(end - rest.begin()));
            if (skip("\"")) {
                return true;
            }
            const char letter = rest.size() > 1 ? rest[1] : '\0';
            const auto* const escape = std::find_if(escapes.begin(), escapes.end(),
                                                    [letter](const auto& known) { return known.second == letter; });
            if (escape == escapes.end()) {
                return false;
            }
            read += escape->first;
            rest.remove_prefix(2);
        }
    }

    bool name(std::string& read) {
        if (rest.starts_with('"')) {
            return text(read);
        }
        const auto* const end = std::find_if_not(rest.begin(), rest.end(), isNameLetter);
        read.assign(rest.begin(), end);
        rest.remove_prefix(read.size());
        return !read.empty();
    }

    std::optional<PropertyValue> value() {
        if (rest.starts_with('"')) {
            std::string read;
            return text(read) ? std::optional(PropertyValue(std::move(read))) : std::nullopt;
        }
        const std::string_view read = word();
        if (const auto* const logical = std::find(logicalNames.begin(), logicalNames.end(), read);
            logical != logicalNames.end()) {
            return PropertyValue(static_cast<Logical>(std::distance(logicalNames.begin(), logical)));
        }
        if (read == "true" || read == "false") {
            return PropertyValue(read == "true");
        }
        int integer = 0;
        if (take(read, integer)) {
            return PropertyValue(integer);
        }
        double real = 0;
        return take(read, real) ? std::optional(PropertyValue(real)) : std::nullopt;
    }

private:
    std::string_view rest;
};

/// The values, each preceded by a blank.
bool readValues(LineReader& line, PropertyEdit& edit) {
    if (edit.form == Form::Bounded) {
        edit.values.resize(boundNames.size());
        for (std::size_t number = 0; number < boundNames.size(); ++number) {
            if (line.skip(' ' + std::string(boundNames[number]) + ' ')) {
                const auto value = line.value();
                edit.values[number] = value.value_or(PropertyValue());
                if (!value) {
                    return false;
                }
            }
        }
        return true;
    }
    while (!line.isAtEnd()) {
        LineReader next = line;
        if (!next.skip(" ") || next.skip("unit ") || next.skip("by ")) {
            return true;
        }
        auto value = next.value();
        if (!value) {
            return false;
        }
        edit.values.push_back(*std::move(value));
        line = next;
    }
    return true;
}

} // namespace

bool hasValuesOfItsForm(const PropertyEdit& edit) {
    const std::size_t count = edit.values.size();
    switch (edit.form) {
    case Form::Single:
        return count == 1;
    case Form::Bounded:
        return count == 3;
    case Form::Table:
        return count > 0 && count % 2 == 0;
    case Form::Enumerated:
    case Form::List:
        return count > 0;
    case Form::Unset:
        return count == 0;
    }
    return false;
}

std::string lineOf(const PropertyEdit& edit) {
    std::string line = nameText(edit.set) + '.' + nameText(edit.property) + ' ';
    line += formNames[static_cast<std::size_t>(edit.form)];
    for (std::size_t number = 0; number < edit.values.size(); ++number) {
        const PropertyValue& value = edit.values[number];
        if (edit.form == Form::Bounded) {
            if (value.isEmpty()) {
                continue;
            }
            line.append(" ").append(boundNames[number]);
        }
        line.append(" ").append(value.visit(ValueText()));
    }
    if (!edit.unit.empty()) {
        line += " unit " + quoted(edit.unit);
    }
    return line + " by " + quoted(edit.author) + " at " + textOf(edit.time);
}

bool readEdit(std::string_view line, PropertyEdit& edit) {
    LineReader reader(line);
    if (!reader.name(edit.set) || !reader.skip(".") || !reader.name(edit.property) || !reader.skip(" ")) {
        return false;
    }
    const auto* const form = std::find(formNames.begin(), formNames.end(), reader.word());
    if (form == formNames.end()) {
        return false;
    }
    edit.form = static_cast<Form>(std::distance(formNames.begin(), form));
    edit.values.clear();
    edit.unit.clear();
    return readValues(reader, edit) && hasValuesOfItsForm(edit) && (!reader.skip(" unit ") || reader.text(edit.unit)) &&
           reader.skip(" by ") && reader.text(edit.author) && reader.skip(" at ") && take(reader.word(), edit.time) &&
           edit.time < decltype(edit.time)::max() && // there is a later one
           reader.isAtEnd();
}

std::optional<PropertyEdit> editOf(std::string_view line) {
    PropertyEdit edit;
    return readEdit(line, edit) ? std::optional(std::move(edit)) : std::nullopt;
}

} // namespace orv::host

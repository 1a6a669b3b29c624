#include "Annotate/ItemText.h"

#include "Annotate/ValueText.h"

#include <algorithm>

namespace annotate {

namespace {

constexpr char escape = '\\';
constexpr std::string_view escapedInRows = ";\\=";
constexpr std::string_view escapedInLists = ";\\";

std::string escaped(const std::string& item, std::string_view characters) {
    std::string text;
    for (const char character : item) {
        text.append(characters.find(character) == std::string_view::npos ? 0 : 1, escape);
        text += character;
    }
    return text;
}

bool isEscape(std::string_view text, std::size_t place) {
    return text[place] == escape && place + 1 < text.size() &&
           escapedInRows.find(text[place + 1]) != std::string_view::npos;
}

std::string unescaped(std::string_view item) {
    std::string text;
    for (std::size_t place = 0; place < item.size(); ++place) {
        place += isEscape(item, place) ? 1 : 0;
        text += item[place];
    }
    return text;
}

/// Where the separator stands that is none of an item's own; the size of the text if it doesn't.
std::size_t find(std::string_view text, char separator) {
    std::size_t place = 0;
    while (place < text.size() && text[place] != separator) {
        place += isEscape(text, place) ? 2 : 1;
    }
    return place;
}

/// As they stand in the text.
std::vector<std::string_view> partsOf(std::string_view text) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t length = find(text, ';');
        parts.push_back(text.substr(0, length));
        if (length == text.size()) {
            return parts;
        }
        text.remove_prefix(length + 1);
    }
}

} // namespace

std::string itemsText(const std::vector<orv::object::PropertyValue>& values, bool areRows) {
    std::string text;
    for (std::size_t place = 0; place < values.size(); ++place) {
        text += place == 0 ? "" : areRows && place % 2 == 1 ? "=" : ";";
        text += escaped(valueText(values[place]), areRows ? escapedInRows : escapedInLists);
    }
    return text;
}

std::vector<std::string> itemsIn(std::string_view text) {
    const std::vector<std::string_view> parts = partsOf(text);
    std::vector<std::string> items(parts.size());
    std::transform(parts.begin(), parts.end(), items.begin(), unescaped);
    return items;
}

std::optional<std::vector<std::string>> rowItemsIn(std::string_view text) {
    std::vector<std::string> items;
    for (const std::string_view row : partsOf(text)) {
        const std::size_t length = find(row, '=');
        if (length == row.size()) {
            return std::nullopt;
        }
        items.push_back(unescaped(row.substr(0, length)));
        items.push_back(unescaped(row.substr(length + 1)));
    }
    return items;
}

} // namespace annotate

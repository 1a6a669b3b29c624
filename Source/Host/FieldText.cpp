#include "Host/FieldText.h"

#include <cmath>
#include <limits>

namespace orv::host {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? "" : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string textOf(bool value) {
    return value ? "true" : "false";
}

bool take(std::string_view text, bool& value) {
    text = trimmed(text);
    const bool isTrue = text == "true" || text == "1";
    const bool isTaken = isTrue || text == "false" || text == "0";
    value = isTaken ? isTrue : value;
    return isTaken;
}

std::string textOf(double value) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : value > 0 ? "INF" : "-INF";
    }
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end};
}

bool take(std::string_view text, double& value) {
    text = trimmed(text);
    if (text == "INF" || text == "+INF" || text == "-INF") {
        value = (text[0] == '-' ? -1 : 1) * std::numeric_limits<double>::infinity();
        return true;
    }
    if (text == "NaN") {
        value = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    double taken = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), taken);
    // The words that from_chars knows are others than those of XML Schema.
    const bool isNumber = error == std::errc{} && end == text.data() + text.size() && std::isfinite(taken);
    value = isNumber ? taken : value;
    return isNumber;
}

std::string textOf(const Guid& value) {
    return value.toString(false);
}

bool take(std::string_view text, Guid& value) {
    return value.boSet(trimmed(text));
}

} // namespace orv::host

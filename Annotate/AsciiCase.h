#pragma once

#include <algorithm>
#include <string_view>

namespace annotate {

// Of the letters A to Z, for keywords; AnyCase compares what people write.

constexpr char toUpper(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

inline bool equalsInAnyCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return toUpper(left) == toUpper(right); });
}

} // namespace annotate

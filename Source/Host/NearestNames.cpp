#include "Host/NearestNames.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace orv::host {

namespace {

constexpr char toLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The number of insertions, deletions and replacements of single characters that make one text the other.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1); // the distances from the part of a so far to each beginning of b
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (toLower(a[i]) == toLower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::vector<std::string_view> nearestNames(std::string_view wanted, const std::vector<std::string_view>& names) {
    std::size_t nearest = wanted.size() / 3 + 1;
    std::vector<std::string_view> near;
    for (const std::string_view name : names) {
        const std::size_t distance = editDistance(wanted, name);
        if (distance < nearest) {
            nearest = distance;
            near.clear();
        }
        if (distance == nearest) {
            near.push_back(name);
        }
    }
    return near;
}

} // namespace orv::host

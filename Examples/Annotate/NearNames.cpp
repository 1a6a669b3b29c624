#include "Annotate/NearNames.h"

#include "Annotate/Arguments.h"

#include <algorithm>
#include <numeric>

namespace annotate {

namespace {

/// The number of insertions, deletions and replacements of single characters that make one text the other.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1); // the distances from the part of a so far to each beginning of b
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const bool isEqual = equalsInAnyCase(a.substr(i, 1), b.substr(j, 1));
            const std::size_t replaced = diagonal + (isEqual ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string didYouMean(std::string_view wanted, const std::vector<std::string_view>& names) {
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
    std::string end = near.empty() ? "." : "; did you mean ";
    for (std::size_t index = 0; index < near.size(); ++index) {
        end.append(near[index]);
        end += index + 1 == near.size() ? "?" : index + 2 == near.size() ? " or " : ", ";
    }
    return end;
}

} // namespace annotate

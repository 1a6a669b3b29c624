#include "Utilities/Change.h"

#include <algorithm>
#include <cstddef>

namespace orv::utilities {

namespace {

std::size_t commonBeginning(std::string_view one, std::string_view other) {
    constexpr std::size_t block = 4096; // compared by memory, which is much quicker than byte by byte
    const std::size_t shorter = std::min(one.size(), other.size());
    std::size_t common = 0;
    while (common + block <= shorter && one.substr(common, block) == other.substr(common, block)) {
        common += block;
    }
    while (common < shorter && one[common] == other[common]) {
        ++common;
    }
    return common;
}

} // namespace

Change Change::between(std::string_view content, std::string_view other) {
    const std::size_t position = commonBeginning(content, other);
    Change change{position, content.substr(position), other.substr(position)};
    if (content.size() == other.size()) {
        while (!change.before.empty() && change.before.back() == change.after.back()) {
            change.before.remove_suffix(1);
            change.after.remove_suffix(1);
        }
    }
    return change;
}

} // namespace orv::utilities

#include "Host/LatestEdits.h"

#include "Host/EditLine.h"

#include <functional>
#include <string_view>
#include <utility>

namespace orv::host {

void LatestEdits::clear() {
    count = 0;
    numbers.clear();
}

bool LatestEdits::take(const std::string& line) {
    if (count == edits.size()) {
        edits.emplace_back();
    }
    Edit& taken = edits[count];
    PropertyEdit& edit = taken.content;
    if (!readEdit(line, edit)) {
        return false;
    }
    taken.line = &line;
    constexpr std::hash<std::string_view> hash;
    const std::uint32_t number = numbers.findOrAdd(
        hash(edit.set) * 31 + hash(edit.property), static_cast<std::uint32_t>(count), [&](std::uint32_t known) {
            return edits[known].content.property == edit.property && edits[known].content.set == edit.set;
        });
    if (number == count) {
        ++count;
    } else if (edits[number].content.time <= edit.time) {
        std::swap(edits[number], taken);
    }
    return true;
}

} // namespace orv::host

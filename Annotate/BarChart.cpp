#include "Annotate/BarChart.h"

#include "Annotate/Terminal.h"
#include "Xml/Utf8.h"

#include <algorithm>
#include <string_view>

namespace annotate {

namespace {

/// The beginning of the text that takes at most so many columns, with an ellipsis if it isn't all.
std::string cutTo(std::string_view text, std::size_t columns) {
    if (widthOf(text) <= columns) {
        return std::string(text);
    }
    std::size_t size = 0;
    while (size < text.size()) {
        const std::size_t next = size + std::max<std::size_t>(orv::xml::decodeUtf8(text.substr(size)).length, 1);
        if (widthOf(text.substr(0, next)) + 1 > columns) {
            break;
        }
        size = next;
    }
    return std::string(text.substr(0, size)) + "…";
}

} // namespace

std::vector<std::string> barChart(const Counts& counts, std::size_t columns) {
    std::size_t highest = 0;
    std::size_t nameWidth = 0;
    for (const auto& [name, count] : counts) {
        highest = std::max(highest, count);
        nameWidth = std::max(nameWidth, widthOf(name));
    }
    nameWidth = std::min(nameWidth, columns / 2);
    const std::size_t numberWidth = std::to_string(highest).size();
    const std::size_t others = nameWidth + numberWidth + 3; // two blanks before the number, one behind it
    const std::size_t available = std::max<std::size_t>(columns > others ? columns - others : 1, 1);
    std::vector<std::string> lines;
    for (const auto& [name, count] : counts) {
        const std::size_t length = highest <= available ? count : std::max<std::size_t>(count * available / highest, 1);
        const std::string number = std::to_string(count);
        std::string line = cutTo(name, nameWidth);
        line.append(nameWidth - widthOf(line) + 2 + numberWidth - number.size(), ' ');
        lines.push_back(line + number + ' ' + std::string(length, '#'));
    }
    return lines;
}

} // namespace annotate

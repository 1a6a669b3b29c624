#include "Annotate/NearNames.h"

#include "Annotate/AnyCase.h"
#include "Host/NearestNames.h"

#include <algorithm>
#include <iterator>

namespace annotate {

namespace {

/// The shortest that have the text within them.
std::vector<std::string_view> namesWith(std::string_view text, const std::vector<std::string_view>& names) {
    constexpr std::size_t shortestText = 3;
    constexpr std::size_t most = 3;
    std::vector<std::string_view> found;
    const AnyCase part(text);
    if (text.size() >= shortestText) {
        std::copy_if(names.begin(), names.end(), std::back_inserter(found),
                     [&part](std::string_view name) { return part.isIn(name); });
    }
    std::stable_sort(found.begin(), found.end(),
                     [](std::string_view a, std::string_view b) { return a.size() < b.size(); });
    found.resize(std::min(found.size(), most));
    return found;
}

} // namespace

std::string didYouMean(std::string_view wanted, const std::vector<std::string_view>& names) {
    std::vector<std::string_view> near = orv::host::nearestNames(wanted, names);
    near = near.empty() ? namesWith(wanted, names) : near;
    std::string end = near.empty() ? "." : "; did you mean ";
    for (std::size_t index = 0; index < near.size(); ++index) {
        end.append(near[index]);
        end += index + 1 == near.size() ? "?" : index + 2 == near.size() ? " or " : ", ";
    }
    return end;
}

} // namespace annotate

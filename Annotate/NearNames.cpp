#include "Annotate/NearNames.h"

#include "Host/NearestNames.h"

namespace annotate {

std::string didYouMean(std::string_view wanted, const std::vector<std::string_view>& names) {
    const std::vector<std::string_view> near = orv::host::nearestNames(wanted, names);
    std::string end = near.empty() ? "." : "; did you mean ";
    for (std::size_t index = 0; index < near.size(); ++index) {
        end.append(near[index]);
        end += index + 1 == near.size() ? "?" : index + 2 == near.size() ? " or " : ", ";
    }
    return end;
}

} // namespace annotate

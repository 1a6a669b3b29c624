#pragma once

#include "OrvExport.h"

#include <string_view>
#include <vector>

namespace orv::host {

/// The names that the fewest single-character edits make of the wanted one, the case of letters from A to Z aside. None
/// if that takes many edits for its length.
ORV_HOST_EXPORT std::vector<std::string_view> nearestNames(std::string_view wanted,
                                                           const std::vector<std::string_view>& names);

} // namespace orv::host

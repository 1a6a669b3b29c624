#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// The end of a sentence that says that there is no such name: "; did you mean A or B?" with the names that the fewest
/// single-character edits make of it, letter case aside, or else some that have it within them; "." if there are none.
std::string didYouMean(std::string_view wanted, const std::vector<std::string_view>& names);

} // namespace annotate

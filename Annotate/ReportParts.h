#pragma once

#include <string_view>

namespace annotate {

/// What every report has in it: the style and the script from the folder Report, and the digests by which a page allows
/// them, like "sha256-...".
extern const std::string_view reportStyle;
extern const std::string_view reportStyleDigest;
extern const std::string_view reportScript;
extern const std::string_view reportScriptDigest;

} // namespace annotate

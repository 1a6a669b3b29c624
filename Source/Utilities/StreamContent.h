#pragma once

#include "OrvExport.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace orv::utilities {

/// All that is left on a stream that is good, whose state isn't changed. Nothing if it can't be read to its end.
ORV_UTILITIES_EXPORT std::optional<std::string> contentOf(std::istream& stream);

} // namespace orv::utilities

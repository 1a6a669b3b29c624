#pragma once

#include "OrvExport.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace orv::utilities {

/// The rest of the stream, which must be good; its state flags stay as they are. Nothing if it can't be read to its
/// end.
ORV_UTILITIES_EXPORT std::optional<std::string> contentOf(std::istream& stream);

} // namespace orv::utilities

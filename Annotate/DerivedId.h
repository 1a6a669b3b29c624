#pragma once

#include "Id/Guid.h"

#include <string_view>

namespace annotate {

/// An id that is the same one for the same content, and as good as never for another.
orv::Guid derivedId(std::string_view content);

} // namespace annotate

#pragma once

#include "Host/PropertyEdits.h"

#include <string_view>

namespace orv::host {

/// Makes the edit, which may have been used before, the one that the line tells. Returns whether it tells one; if not,
/// the edit is of no use. Quicker than editOf if the edit's texts have room enough from before.
bool readEdit(std::string_view line, PropertyEdit& edit);

} // namespace orv::host

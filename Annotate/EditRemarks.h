#pragma once

#include "Annotate/Definitions.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <vector>

namespace annotate {

/// What there is to be said of an edit that can be made, as its check left it: what the check remarks, and values that
/// make no sense together. Empty if nothing.
std::vector<std::string> remarksOn(const Definition& definition, const orv::host::Outcome& outcome,
                                   const orv::host::PropertyEdit& edit);

} // namespace annotate

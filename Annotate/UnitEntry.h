#pragma once

#include "Annotate/Definitions.h"
#include "Annotate/ModelUnits.h"
#include "Object/PropertyValue.h"

#include <string>
#include <vector>

namespace annotate {

/// Whether the property's values are measured, so that a model has a unit for them. Those of tables aren't taken for
/// measured, which may have two.
bool isMeasured(const Definition& definition);

/// Turns values of a measured property that a user gave into numbers of the model's unit, and returns the symbol of
/// that; empty if the model has none for them. The user's unit is the one named or, where that is empty, the one that
/// stands behind a number, as in "24 cm"; a plain number is in the model's. What is no number stays as it is.
///
/// Units of the SI are known with all prefixes, and those that people write beside them. Numbers are converted to 15
/// digits. Throws RequestError, with what would be taken, for a unit that can't be converted into the model's.
std::string takeUnits(const Definition& definition, const ModelUnits& units, const std::string& named,
                      std::vector<orv::object::PropertyValue>& values);

} // namespace annotate

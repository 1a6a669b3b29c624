#pragma once

#include "Annotate/Definitions.h"
#include "Annotate/ModelUnits.h"
#include "Object/PropertyValue.h"

#include <string>
#include <vector>

namespace annotate {

/// Whether the property's values are measured, so that a model has a unit for them; not of tables, which have two.
bool isMeasured(const Definition& definition);

/// The symbol of the model's unit for the property's values, those of a table as unitsOfTable has them; empty if it
/// has none.
std::string unitOfValues(const Definition& definition, const ModelUnits& units);

/// Turns values of a measured property that a user gave into numbers of the model's unit, and returns what unitOfValues
/// does. The user's unit is the one named, as that spells it, or where that is empty the one that stands behind a
/// number, as in "24 cm"; a plain number is in the model's. What is no number stays as it is.
///
/// Units of the SI are known with all prefixes, and those that people write beside them. Numbers are converted to 15
/// digits. Throws RequestError, with what would be taken, for a unit that can't be converted into the model's.
std::string takeUnits(const Definition& definition, const ModelUnits& units, const std::string& named,
                      std::vector<orv::object::PropertyValue>& values);

} // namespace annotate

#pragma once

#include "Object/PropertyValue.h"

#include <optional>
#include <string>

namespace annotate {

class StepParameter;

/// A value of a select like IfcValue, as in IFCLENGTHMEASURE(2.5).
struct StepValue {
    orv::object::PropertyValue value; ///< Empty for a missing one. The elements of a list are one text, joined by ';'.
    std::string type;                 ///< As the schema spells it, as in "IfcLengthMeasure"; empty if it has none.
};

StepValue stepValue(StepParameter parameter);

/// The number that the parameter holds, typed or not; none if it is something else.
std::optional<double> numberIn(StepParameter parameter);

/// The text of a string or an enumeration, typed or not, in UTF-8; empty text if it is something else.
std::string textIn(StepParameter parameter);

} // namespace annotate

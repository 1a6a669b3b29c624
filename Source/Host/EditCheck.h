#pragma once

#include "Host/Outcome.h"
#include "Host/PropertyEdits.h"
#include "IfcVersionMapping/Def.h"

namespace orv::host {

/// Says that there is no definition of the property, with the names that are nearest.
Outcome unknown(const PropertyEdit& edit);

/// Holds the edit against the definition of its property, and brings its values into the form in which the property
/// will hold them. Looks at neither the object nor the store.
Outcome check(const ifc::def::xml::Def& definition, PropertyEdit& edit);

} // namespace orv::host

#pragma once

#include "Host/Outcome.h"
#include "Host/PropertyEdits.h"
#include "IfcVersionMapping/Def.h"

namespace orv::host {

/// The outcome for an edit whose property has no definition, NoSuchSet or NoSuchProperty, with the nearest names.
Outcome unknown(const PropertyEdit& edit);

/// The outcome for an edit of a property with that definition: Done, TakesNoValue or ValueRefused. Brings the values
/// into the form in which the property will hold them; if they are refused, some may be in it. Looks at neither the
/// object nor the store.
Outcome check(const ifc::def::xml::Def& definition, PropertyEdit& edit);

} // namespace orv::host

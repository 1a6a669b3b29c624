#pragma once

#include "Annotate/Definitions.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// Lower, upper and set point in a text like UPPER;LOWER;SET POINT, in which parts may be empty or missing. Throws
/// RequestError if there are more.
std::vector<orv::object::PropertyValue> boundsIn(const Definition& definition, std::string_view text);

/// The edit of the property that a text tells in the form in which edits are listed: A;B for lists and enumerations,
/// UPPER;LOWER;SET POINT, A=B;C=D for the rows of a table, as itemsText makes them; an empty one unsets. Throws
/// RequestError if it isn't of the form, or the property takes no value.
orv::host::PropertyEdit editIn(const Definition& definition, const std::string& text);

/// The kind of property that the edit makes.
orv::ifc::def::xml::PropertyKind kindOf(const orv::host::PropertyEdit& edit);

/// The values that the edit sets the property to, in the order of that form.
std::vector<orv::object::PropertyValue> valuesInOrder(const orv::host::PropertyEdit& edit);

/// What the edit sets the property to, in that form.
std::string editText(const orv::host::PropertyEdit& edit);

} // namespace annotate

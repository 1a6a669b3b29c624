#pragma once

#include "Object/PropertyValue.h"

#include <string>
#include <string_view>

namespace annotate {

/// A version of IFC by what statements look like in it.
enum class IfcVersion { Ifc2x3, Ifc4, Ifc4x3 };

/// Of the schema that a file names, as in IFC4X3_ADD2.
IfcVersion versionOf(std::string_view schema);

/// The value as a parameter in a file of the version, as in IFCLENGTHMEASURE(2.5): with its type, or the nearest that
/// the version has for property values, or that of what it holds if the type isn't known. A dollar sign if the type
/// doesn't take the value.
std::string exportedValue(IfcVersion version, const orv::object::PropertyValue& value, std::string_view type);

} // namespace annotate

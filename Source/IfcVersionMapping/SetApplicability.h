#pragma once

#include "OrvExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace orv::ifc {

/// A class of objects that a property set is for, as in IfcActuator with the predefined type ELECTRICACTUATOR.
struct ApplicableClass {
    std::string_view name;
    std::string_view predefinedType; ///< Empty for objects of any.

    bool operator==(const ApplicableClass&) const = default;
};

/// The classes that the set of exactly that name is for: the published ones, and then those of added definitions that
/// aren't among them. None if there is no such set, or if its definition names no class. The texts live as long as the
/// process.
ORV_IFC_VERSION_MAPPING_EXPORT std::vector<ApplicableClass> applicableClasses(const std::string& pset);

} // namespace orv::ifc

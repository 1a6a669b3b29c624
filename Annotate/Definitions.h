#pragma once

#include "Annotate/Arguments.h"
#include "Host/Outcome.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <string>
#include <string_view>
#include <vector>

namespace annotate {

using Definition = orv::ifc::def::xml::Def;

/// All definitions, the published ones and those of the user's own.
std::vector<const Definition*> allDefinitions();

/// Throws RequestError, with the nearest names, if there is no such set or property.
const Definition& findDefinition(const std::string& set, const std::string& property);

/// That the set has no such property, with the nearest of the names and those that are defined; or that there is no
/// such set, if it has none of either.
RequestError unknownProperty(const std::string& set, const std::string& property, std::vector<std::string_view> names);

/// That there is no definition of such a set.
RequestError unknownSet(const std::string& set);

/// As in "Pset_WallCommon.FireRating".
std::string fullName(const Definition& definition);

/// As in "single".
std::string_view kindName(orv::ifc::def::xml::PropertyKind kind);

/// As in "IfcLabel", or "IfcReal to IfcLabel" for a table.
std::string shownType(const Definition& definition);

/// Why the edit couldn't be made, in a sentence.
std::string explain(const Definition& definition, const orv::host::Outcome& outcome);

} // namespace annotate

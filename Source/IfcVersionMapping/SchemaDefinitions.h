#pragma once

#include "Export.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/Def.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace orv::ifc {

/// The published definitions of IFC4X3_ADD2, IFC4 and IFC2X3, sorted by property set and within a set as published, no
/// two of them with the same names. They live as long as the process.
ORV_EXPORT std::span<const def::xml::Def> definitions();

/// The published definition with exactly these names, null if there is none. It lives as long as the process.
ORV_EXPORT const def::xml::Def* findSchemaDefForProperty(const std::string& pset, const std::string& property);

/// Makes a property with the name, of the kind and with the value types of the definition, appends it to the set and
/// gives it. The property has no value yet; it has no type where the definition names none or one that
/// fc::FcValueType doesn't know. Null if the definition or the set is null.
ORV_EXPORT std::shared_ptr<fc::FcBase>
addSchemaDefToPropertySetDefinition(const def::xml::Def* definition,
                                    const std::shared_ptr<fc::core::kernel::FcPropertySet>& set);

/// Appends to the list, made if it is unset, a value without content of the list's type, and gives true.
ORV_EXPORT bool addListValue(fc::FcPropertyListValue& list);

/// A defining and a defined value for the table, of its types and without content. The table stays as it is.
ORV_EXPORT std::optional<std::pair<fc::FcValue, fc::FcValue>> createTableValue(const fc::FcPropertyTableValue& table);

} // namespace orv::ifc

#pragma once

#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/Def.h"
#include "OrvExport.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace orv::ifc {

/// The published definitions of IFC4X3_ADD2, IFC4 and IFC2X3, sorted by property set and within a set as published, no
/// two of them with the same names. They live as long as the process.
ORV_IFC_VERSION_MAPPING_EXPORT std::span<const def::xml::Def> definitions();

/// What addDefinitions made of a file.
struct AddedDefinitions {
    std::size_t properties = 0; ///< How many are known from now on that weren't before.
    std::size_t line = 0;       ///< Where the file is bad, from 1; 0 if it was taken.
    std::string reason;         ///< Why, as a phrase without a full stop; empty if it was taken.
};

/// Takes the definitions of property sets in the XML form in which those of IFC are published: any number of
/// PropertySetDef, with Name, ApplicableClasses and PropertyDefs, under any root or as the root. The look-ups know them
/// from then on, as long as the process lives. source is what their Def::source says, as a rule the name of the file.
///
/// A published definition of a property stays the one that is found, and so does an equal one of another file. A file
/// is refused whole if it isn't well-formed, holds no set, has a set or a property without a name, a set without
/// properties, a property without one of the published types or with an enumerated value that has a semicolon, two
/// definitions of one property, or one that differs from that of a file added before.
ORV_IFC_VERSION_MAPPING_EXPORT AddedDefinitions addDefinitions(std::istream& stream, const std::string& source = "own");

/// The definitions that addDefinitions made known, in their order. They live as long as the process.
ORV_IFC_VERSION_MAPPING_EXPORT std::vector<const def::xml::Def*> addedDefinitions();

/// The definition with exactly these names, the published one or else an added one; null if there is none. It lives as
/// long as the process.
ORV_IFC_VERSION_MAPPING_EXPORT const def::xml::Def* findSchemaDefForProperty(const std::string& pset,
                                                                             const std::string& property);

/// Makes a property with the name, of the kind and with the value types of the definition, appends it to the set and
/// returns it. The property has no value yet; it has no type where the definition names none or one that
/// fc::FcValueType doesn't know. Null if the definition or the set is null.
ORV_IFC_VERSION_MAPPING_EXPORT std::shared_ptr<fc::FcBase>
addSchemaDefToPropertySetDefinition(const def::xml::Def* definition,
                                    const std::shared_ptr<fc::core::kernel::FcPropertySet>& set);

/// Appends to the list, made if it is unset, a value without content of the list's type, and returns true.
ORV_IFC_VERSION_MAPPING_EXPORT bool addListValue(fc::FcPropertyListValue& list);

/// A defining and a defined value for the table, of its types and without content. The table stays as it is.
ORV_IFC_VERSION_MAPPING_EXPORT std::optional<std::pair<fc::FcValue, fc::FcValue>>
createTableValue(const fc::FcPropertyTableValue& table);

} // namespace orv::ifc

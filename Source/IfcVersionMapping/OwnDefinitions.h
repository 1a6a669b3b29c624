#pragma once

#include "IfcVersionMapping/Def.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::ifc {

/// What a file defines.
struct DefinitionsFile {
    struct Property {
        std::size_t line = 0; ///< From 1.
        std::string set;
        std::string name;
        def::xml::PropertyKind kind = def::xml::PropertyKind::Single;
        std::string valueType;
        std::string definedValueType;
        std::string enumerationValues;
    };

    struct Set {
        std::string name;
        std::vector<std::string> classes;
    };

    std::vector<Property> properties;
    std::vector<Set> sets;
};

/// Why a file is refused.
struct DefinitionsRefusal {
    std::size_t line = 0; ///< From 1.
    std::string reason;   ///< A phrase without a full stop.
};

/// Adds the definitions that aren't known yet, for the life of the process. Adds none, and returns the reason, if one
/// differs from an added one of the same name.
std::optional<DefinitionsRefusal> keepDefinitions(const DefinitionsFile& file, const std::string& source);

/// A published definition, null if there is none.
const def::xml::Def* findPublishedDefinition(std::string_view pset, std::string_view property);

/// Whether any definitions were kept.
extern bool hasOwnDefinitions;

/// One that was kept, null if there is none.
const def::xml::Def* findOwnDefinition(std::string_view pset, std::string_view property);

/// All that were kept, in order.
std::vector<const def::xml::Def*> ownDefinitions();

/// The classes that kept definitions name for the set, each as it was given.
std::vector<std::string_view> ownClasses(std::string_view pset);

} // namespace orv::ifc

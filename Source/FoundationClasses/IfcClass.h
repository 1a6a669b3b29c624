#pragma once

#include "FoundationClasses/TableName.h"
#include "OrvExport.h"

#include <cstdint>
#include <string_view>

namespace orv::fc {

/// A row of the class table, which holds the classes below IfcRoot and IfcProperty of IFC4X3_ADD2 and what IFC4 and
/// IFC2X3 had besides. The classes are numbered depth first, so that a class and its descendants hold one closed range.
struct ORV_FOUNDATION_CLASSES_EXPORT IfcClass {
    TableName name; ///< As the schema spells it, as in "IfcWall".

    /// For a class of an older version, that of the present class which stands for it.
    std::uint32_t kindNumber = 0;

    /// The greatest number among the class and its descendants; 0 for a class that is gone.
    std::uint32_t lastOfKind = 0;

    /// Whether other is this class or one below it. A class that is gone includes itself alone.
    bool includes(const IfcClass& other) const {
        return name == std::string_view(other.name) ||
               (kindNumber <= other.kindNumber && other.kindNumber <= lastOfKind);
    }

    /// Whether this is IfcObjectDefinition or a class below it.
    bool isObjectDefinition() const { return isObjectDefinition(kindNumber); }

    /// Whether the number is that of IfcObjectDefinition or of a class below it.
    static bool isObjectDefinition(std::uint32_t number) {
        return firstObjectDefinition <= number && number <= lastObjectDefinition;
    }

    /// The row of that name, in any mix of upper and lower case, so that the keywords of IFC files ("IFCWALL") find it
    /// as well; null if the table has none. The table lives as long as the process.
    static const IfcClass* find(std::string_view name);

    /// The class of today with that number, null if the table has none.
    static const IfcClass* ofNumber(std::uint32_t number);

    /// The class that stands for this one today: itself, or that of its number.
    const IfcClass& present() const { return *ofNumber(kindNumber); }

private:
    static constexpr std::uint32_t firstObjectDefinition = 355;
    static constexpr std::uint32_t lastObjectDefinition = 769;
};

} // namespace orv::fc

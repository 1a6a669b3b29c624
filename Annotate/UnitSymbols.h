#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace annotate {

/// A unit of the SI by its name in IFC, as in SQUARE_METRE.
struct SiUnitName {
    std::string_view name;
    std::string_view kind;   ///< As in AREAUNIT.
    std::string_view symbol; ///< Without the power.
    int power = 1;
    double factor = 1; ///< To the coherent unit, without a prefix.
    double offset = 0;

    /// Null if there is no such unit.
    static const SiUnitName* find(std::string_view name);

    static std::span<const SiUnitName> all();
};

/// A prefix of the SI by its name in IFC, as in MILLI.
struct SiPrefix {
    std::string_view name;
    std::string_view symbol;
    double factor = 1;

    /// That of no name is none; null if there is no such prefix.
    static const SiPrefix* find(std::string_view name);
};

/// The prefix with which the unit has that symbol, as MILLI for mm² of SQUARE_METRE; null if there is none.
const SiPrefix* prefixOfSymbol(const SiUnitName& unit, std::string_view symbol);

/// The symbol of a unit that is known by a name like "FOOT" or "square foot"; the name itself if it isn't known.
std::string symbolOfName(const std::string& name);

/// The usual symbol of the coherent SI unit of a kind of derived units like THERMALTRANSMITTANCEUNIT; empty if the kind
/// has none.
std::string_view coherentSymbol(std::string_view kind);

/// The symbol of the coherent SI unit of a value type: kg of IfcMassMeasure. Empty for what isn't measured.
std::string siSymbol(std::string_view valueType);

/// The units of a table's values as DEFINING=DEFINED, with 1 for defining ones without a unit; DEFINING alone if the
/// defined ones have none.
std::string unitsOfTable(const std::string& defining, const std::string& defined);

/// The two that unitsOfTable made that of; empty where there is none.
std::pair<std::string, std::string> unitsInTable(const std::string& units);

/// The symbol with the power, as in m².
std::string raised(std::string_view symbol, int power);

/// The kind of the units of a value type: LENGTHUNIT of IfcPositiveLengthMeasure. Empty for what isn't measured.
std::string unitKind(std::string_view valueType);

} // namespace annotate

#pragma once

#include "FoundationClasses/TableName.h"
#include "OrvExport.h"

#include <cstdint>
#include <string_view>

namespace orv::fc {

/// What a value of a type holds.
enum class FcContent : std::uint8_t { Text, Real, Integer, Boolean, Logical };

/// A row of the table of value types: one of the defined types of IFC4X3_ADD2 that property values can have.
struct ORV_FOUNDATION_CLASSES_EXPORT FcValueType {
    TableName name;                      ///< As the schema spells it, as in "IfcThermalTransmittanceMeasure".
    FcContent content = FcContent::Text; ///< IfcNumericMeasure, any number, holds a real.

    /// The row of exactly that name, null if the table has none. The table lives as long as the process.
    static const FcValueType* find(std::string_view name);

    /// The row of that number, from 1 on; null for 0.
    static const FcValueType* ofNumber(std::uint8_t number);

    /// The number of a row of the table; 0 for null.
    static std::uint8_t numberOf(const FcValueType* row);
};

} // namespace orv::fc

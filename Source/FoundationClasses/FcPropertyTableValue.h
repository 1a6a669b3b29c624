#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcValue.h"

#include <vector>

namespace orv::fc {

/// A property with a table of pairs: entry i of one list belongs to entry i of the other.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertyTableValue : public FcProperty {
public:
    static constexpr std::uint32_t classNumber = 174;

    std::uint32_t kindNumber() const override;

    std::optional<std::vector<FcValue>> definingValues;
    std::optional<std::vector<FcValue>> definedValues;
    const FcValueType* definingType = nullptr; ///< That of new defining values; null for none.
    const FcValueType* definedType = nullptr;  ///< That of new defined values; null for none.
};

} // namespace orv::fc

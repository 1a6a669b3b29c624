#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcValue.h"

#include <vector>

namespace orv::fc {

/// A property with a list of values.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertyListValue : public FcProperty {
public:
    static constexpr std::uint32_t classNumber = 171;

    std::uint32_t kindNumber() const override;

    std::optional<std::vector<FcValue>> listValues;
    const FcValueType* valueType = nullptr; ///< That of new values; null for none.
};

} // namespace orv::fc

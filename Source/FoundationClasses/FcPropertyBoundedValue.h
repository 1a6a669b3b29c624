#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcValue.h"

namespace orv::fc {

/// A property with a range of values.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertyBoundedValue : public FcProperty {
public:
    static constexpr std::uint32_t classNumber = 169;

    std::uint32_t kindNumber() const override;

    FcValue upperBoundValue;
    FcValue lowerBoundValue;
    FcValue setPointValue;
};

} // namespace orv::fc

#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcValue.h"

namespace orv::fc {

/// A property with one value.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertySingleValue : public FcProperty {
public:
    static constexpr std::uint32_t classNumber = 173;

    std::uint32_t kindNumber() const override;

    /// Stores the value if FcValue::updateValueFromPropertyValue takes it; otherwise the property has none afterwards.
    /// Returns whether it took it.
    bool setFromPropertyValue(const object::PropertyValue& value);

    FcValue nominalValue;
};

} // namespace orv::fc

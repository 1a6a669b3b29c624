#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcValue.h"

namespace orv::fc {

/// A property with one value.
class ORV_EXPORT FcPropertySingleValue : public FcProperty {
public:
    static constexpr std::uint32_t classNumber = 173;

    FcPropertySingleValue();

    /// Gives true if the value was taken, as FcValue::updateValueFromPropertyValue tells; otherwise the property has
    /// none afterwards.
    bool setFromPropertyValue(const object::PropertyValue& value);

    FcValue nominalValue;
};

} // namespace orv::fc

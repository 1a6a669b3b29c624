#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcValue.h"

#include <vector>

namespace orv::fc {

/// A property with a choice of values.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertyEnumeratedValue : public FcProperty {
public:
    static constexpr std::uint32_t classNumber = 170;

    std::uint32_t kindNumber() const override;

    /// Of "EnumerationValues", returns the texts of the values in brackets with semicolons between them, as in "(a;b)",
    /// or nothing if the list is unset.
    std::optional<std::string> getAttributeAsString(const std::string& attribute) const override;

    std::optional<std::vector<FcValue>> enumerationValues;
};

} // namespace orv::fc

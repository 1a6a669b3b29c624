#pragma once

#include "FoundationClasses/FcProperty.h"
#include "FoundationClasses/FcPropertySetDefinition.h"
#include "FoundationClasses/NameIndex.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace orv::fc::core::kernel {

/// A property set: properties in the order in which they were added.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertySet : public FcPropertySetDefinition,
                                                    public std::enable_shared_from_this<FcPropertySet> {
public:
    static constexpr std::uint32_t classNumber = 779;

    FcPropertySet() = default;
    FcPropertySet(const FcPropertySet&) = delete;
    FcPropertySet& operator=(const FcPropertySet&) = delete;

    std::uint32_t kindNumber() const override;

    /// The first property of exactly that name, null if there is none.
    std::shared_ptr<FcProperty> findProperty(const std::string& propertyName) const;

    /// Appends the property, and adopts it.
    void addProperty(const std::shared_ptr<FcProperty>& property);

    /// Makes this the set that FcProperty::deleteProperty takes the property out of. A set that isn't held by a shared
    /// pointer adopts nothing.
    void adopt(FcProperty& property);

    /// For hosts to change as well; one that renames a property there puts it in anew (see NameTable).
    std::vector<std::shared_ptr<FcProperty>> properties;

private:
    mutable NameIndex<FcProperty> propertyIndex;
};

} // namespace orv::fc::core::kernel

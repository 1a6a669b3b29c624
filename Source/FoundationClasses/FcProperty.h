#pragma once

#include "FoundationClasses/FcBase.h"

#include <memory>

namespace orv::fc {

class Data;

namespace core::kernel {
class FcPropertySet;
}

/// A property of any class. Those with fields of their own derive from it; the others, complex and reference
/// properties, are of this very class and take no value.
class ORV_FOUNDATION_CLASSES_EXPORT FcProperty : public FcBase {
public:
    static constexpr std::uint32_t firstClassNumber = 166;
    static constexpr std::uint32_t lastClassNumber = 174;

    /// A property of that class, which must be one without a C++ class of its own: 166 to 168 or 172.
    explicit FcProperty(const IfcClass& rowOfTable) : FcBase(rowOfTable) {}

    /// Of "Name", returns the name.
    std::optional<std::string> getAttributeAsString(const std::string& attribute) const override;

    /// Takes the property out of the set that adopted it; does nothing if none has.
    /// The object lives on for as long as somebody holds it. data and keepEntity belong to models whose properties are
    /// entities of their Data; these aren't.
    void deleteProperty(Data& data, bool keepEntity);

    std::string name;

private:
    friend class core::kernel::FcPropertySet;

    std::weak_ptr<core::kernel::FcPropertySet> set;
};

} // namespace orv::fc

#pragma once

#include "FoundationClasses/FcBase.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orv::fc {

class Data;

namespace core::kernel {
class FcPropertySet;
}

/// A property of any class.
class ORV_FOUNDATION_CLASSES_EXPORT FcProperty : public FcBase {
public:
    /// Whether the number is that of IfcProperty or of a class below it.
    static bool isProperty(std::uint32_t number) {
        constexpr std::uint32_t first = 166;
        constexpr std::uint32_t last = 174;
        return first <= number && number <= last;
    }

    /// Of "Name", returns the name.
    std::optional<std::string> getAttributeAsString(const std::string& attribute) const override;

    /// Takes the property out of the set that adopted it; does nothing if none has.
    /// The object lives on for as long as somebody holds it. data and keepEntity aren't used: properties aren't
    /// entities of a Data here.
    void deleteProperty(Data& data, bool keepEntity);

    std::string name;

private:
    friend class core::kernel::FcPropertySet;

    std::weak_ptr<core::kernel::FcPropertySet> set;
};

/// A property of a class without fields here, such as a complex or a reference property. It takes no value.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertyWithoutValue : public FcProperty {
public:
    /// The class must be a row of the table without a C++ class of its own: 166 to 168 or 172.
    explicit FcPropertyWithoutValue(const IfcClass& rowOfTable) : classNumber(rowOfTable.kindNumber) {}

    std::uint32_t kindNumber() const override;

private:
    std::uint32_t classNumber;
};

} // namespace orv::fc

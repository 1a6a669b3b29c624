#pragma once

#include "FoundationClasses/IfcClass.h"
#include "Id/Guid.h"
#include "OrvExport.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orv::fc {

/// An instance of a class of the class table. A class and its descendants hold one closed range of kind numbers.
class ORV_FOUNDATION_CLASSES_EXPORT FcBase {
public:
    /// The IFC name of the class, as in "IfcWall", nul-terminated. It lives as long as the process.
    virtual const char* className() const { return IfcClass::ofNumber(kindNumber())->name.data(); }

    /// The number of the class.
    virtual std::uint32_t kindNumber() const = 0;

    /// The text of the attribute of that name of the class, or nothing if it is unset or not known here.
    virtual std::optional<std::string> getAttributeAsString(const std::string& attribute) const;

    virtual ~FcBase() = default;

    /// Zero until the creator of the object sets it.
    Guid guid;

protected:
    FcBase() = default;
    FcBase(const FcBase&) = default;
    FcBase& operator=(const FcBase&) = default;
};

} // namespace orv::fc

#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace annotate {

/// An attribute of a class whose instances tell by their attributes what others tell by properties.
struct DirectAttribute {
    std::string_view className;
    std::size_t place; ///< Among the parameters of a statement.
    std::string_view name;
    std::string_view valueType; ///< As in "IfcLengthMeasure"; empty for an enumeration, or for a value that is typed.
};

/// Those of the class, in the order of the schema, without references. A statement may have fewer, as older schemas do.
std::span<const DirectAttribute> directAttributesOf(std::string_view className);

} // namespace annotate

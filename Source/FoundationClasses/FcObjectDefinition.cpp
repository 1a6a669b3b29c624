#include "FoundationClasses/FcObjectDefinition.h"

namespace orv::fc::core::kernel {

std::optional<std::string> FcObjectDefinition::getAttributeAsString(const std::string& attribute) const {
    return attribute == "GlobalId" ? std::optional(guid.toString(false)) : std::nullopt;
}

} // namespace orv::fc::core::kernel

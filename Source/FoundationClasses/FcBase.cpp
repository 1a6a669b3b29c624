#include "FoundationClasses/FcBase.h"

namespace orv::fc {

std::optional<std::string> FcBase::getAttributeAsString(const std::string& /*attribute*/) const {
    return std::nullopt;
}

} // namespace orv::fc

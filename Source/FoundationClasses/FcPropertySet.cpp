#include "FoundationClasses/FcPropertySet.h"

#include <algorithm>

namespace orv::fc::core::kernel {

std::uint32_t FcPropertySet::kindNumber() const {
    return classNumber;
}

std::shared_ptr<FcProperty> FcPropertySet::findProperty(const std::string& propertyName) const {
    return propertyIndex.find(properties, propertyName, [](const FcProperty& /*property*/) { return true; });
}

void FcPropertySet::addProperty(const std::shared_ptr<FcProperty>& property) {
    if (properties.size() == properties.capacity()) {
        // By half, since doubling leaves up to half of the room unused in the many small sets.
        properties.reserve(properties.size() + std::max<std::size_t>(4, properties.size() / 2));
    }
    properties.push_back(property);
    adopt(*property);
}

void FcPropertySet::adopt(FcProperty& property) {
    property.set = weak_from_this();
}

} // namespace orv::fc::core::kernel

#include "FoundationClasses/FcPropertySet.h"

#include <algorithm>

namespace orv::fc::core::kernel {

FcPropertySet::FcPropertySet() : FcPropertySetDefinition(*IfcClass::ofNumber(classNumber)) {}

std::shared_ptr<FcProperty> FcPropertySet::findProperty(const std::string& propertyName) const {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const auto& property) { return property->name == propertyName; });
    return found == properties.end() ? nullptr : *found;
}

void FcPropertySet::addProperty(const std::shared_ptr<FcProperty>& property) {
    properties.push_back(property);
    adopt(*property);
}

void FcPropertySet::adopt(FcProperty& property) {
    property.set = weak_from_this();
}

} // namespace orv::fc::core::kernel

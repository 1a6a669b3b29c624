#include "FoundationClasses/FcShadowDb.h"

#include "Assert/Assert.h"

#include <utility>

namespace orv::fc {

using core::kernel::FcObjectDefinition;

std::shared_ptr<FcObjectDefinition> FcShadowDb::getShadowObject(const FcObjectDefinition& master) {
    if (auto found = model->findByGuid(master.guid)) {
        if (IfcClass::isObjectDefinition(found->kindNumber())) {
            return std::static_pointer_cast<FcObjectDefinition>(std::move(found));
        }
        reportOtherType();
    }
    if (!IfcClass::isObjectDefinition(master.kindNumber())) {
        return nullptr;
    }
    if (shadowObjects.size() == shadowObjects.capacity()) {
        // First, or want of memory could leave a shadow object that is found and isn't here.
        shadowObjects.reserve(2 * shadowObjects.size() + 1);
    }
    auto shadow = std::dynamic_pointer_cast<FcObjectDefinition>(model->entityCreate(master.className()));
    if (shadow) {
        shadow->guid = master.guid;
        shadowObjects.push_back(shadow);
    }
    return shadow;
}

std::shared_ptr<FcObjectDefinition> FcShadowDb::findShadowObject(const Guid& guid) const {
    auto found = model->findByGuid(guid);
    const bool isObject = found && IfcClass::isObjectDefinition(found->kindNumber());
    return isObject ? std::static_pointer_cast<FcObjectDefinition>(std::move(found)) : nullptr;
}

void FcShadowDb::reportOtherType() {
    if (assert::Assert::isEnabled()) {
        assert::Assert::addAssert({0,
                                   "FcShadowDb already contains a shadow object with this Guid, but of another type... "
                                   "Does the master file contain duplicate guids or something?",
                                   "orv::fc::FcShadowDb::getShadowObject", "Source/FoundationClasses/FcShadowDb", 61});
    }
}

} // namespace orv::fc

#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"

#include "Assert/UntilUnload.h"

namespace orv::domain::shared::enhancementsforreferencemodel {

void Factory::registerClass(std::unique_ptr<EnhancementBase>&& prototype) {
    if (Factory* const factory = getOrCreate()) {
        factory->prototypes[prototype->getEntityName()] = std::move(prototype);
    }
}

std::unique_ptr<EnhancementBase> Factory::createEntityFromName(const std::string& name) {
    Factory* const factory = getOrCreate();
    if (factory == nullptr) {
        return nullptr;
    }
    const auto kind = factory->prototypes.find(name);
    return kind == factory->prototypes.end() ? nullptr : kind->second->createInstance();
}

Factory* Factory::getOrCreate() {
    return UntilUnload<Factory>::get();
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

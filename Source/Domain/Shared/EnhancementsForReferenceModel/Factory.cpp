#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"

namespace orv::domain::shared::enhancementsforreferencemodel {

std::shared_ptr<Factory> Factory::singleton;

void Factory::registerClass(std::unique_ptr<EnhancementBase>&& prototype) {
    std::unique_ptr<EnhancementBase>& entry = getOrCreate().prototypes[prototype->getEntityName()];
    entry = std::move(prototype);
}

std::unique_ptr<EnhancementBase> Factory::createEntityFromName(const std::string& name) {
    const auto& prototypes = getOrCreate().prototypes;
    const auto kind = prototypes.find(name);
    return kind == prototypes.end() ? nullptr : kind->second->createInstance();
}

Factory& Factory::getOrCreate() {
    if (!singleton) {
        singleton = std::make_shared<Factory>();
    }
    return *singleton;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"

namespace orv::domain::shared::enhancementsforreferencemodel {

void EnhancementBase::setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) {
    for (const auto& [name, text] : attributes) {
        if (name == "OwnerId") {
            ownerId.boSet(text);
        }
    }
}

std::unique_ptr<EnhancementBase> EnhancementBase::createInstance() const {
    return nullptr;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

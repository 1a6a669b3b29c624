#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"

namespace annotate {

/// A remark on an object of the model: the record kind of this host.
class Note : public orv::domain::shared::enhancementsforreferencemodel::EnhancementBase {
public:
    std::string text;
    int priority = 0; ///< The user's own scale.
    bool resolved = false;

    std::string getEntityName() const override;
    std::vector<std::pair<std::string, orv::object::PropertyValue>> getAttributes() const override;
    void setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) override;
    std::unique_ptr<EnhancementBase> createInstance() const override;
};

} // namespace annotate

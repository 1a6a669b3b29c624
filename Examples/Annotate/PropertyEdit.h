#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"

namespace annotate {

/// A value that the user set on a property of an object: the record kind by which edits outlive the process. The shadow
/// database lives in memory alone; the edits, set again in order at the next start, make it anew.
class PropertyEdit : public orv::domain::shared::enhancementsforreferencemodel::EnhancementBase {
public:
    enum class Form { Single, List, Table };

    std::string propertySet;
    std::string property;
    Form form = Form::Single;
    std::vector<std::string> values; ///< One; those of the list; or of a table, defining and defined in turn.

    std::string getEntityName() const override;
    std::vector<std::pair<std::string, orv::object::PropertyValue>> getAttributes() const override;
    void setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) override;
    std::unique_ptr<orv::domain::shared::enhancementsforreferencemodel::EnhancementBase>
    createInstance() const override;
};

} // namespace annotate

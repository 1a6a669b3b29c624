#pragma once

#include "FoundationClasses/Data.h"
#include "FoundationClasses/FcObjectDefinition.h"

#include <memory>
#include <vector>

namespace orv::fc {

/// The shadow objects of a reference model: for a master object one of the same class and Guid, which carries what was
/// written and nothing of the master's own.
class ORV_FOUNDATION_CLASSES_EXPORT FcShadowDb {
public:
    FcShadowDb() = default;
    FcShadowDb(const FcShadowDb&) = delete;
    FcShadowDb& operator=(const FcShadowDb&) = delete;

    /// The model of the shadow objects, the same for the life of the database.
    Data& data() { return *model; }

    /// The shadow object of the master, made on first use; null if the master is of a class that isn't below
    /// IfcObjectDefinition. An object with the master's Guid that is no object definition is reported and left as it
    /// is, and one is made beside it, which is found from then on.
    std::shared_ptr<core::kernel::FcObjectDefinition> getShadowObject(const core::kernel::FcObjectDefinition& master);

    /// The object definition with that Guid; null if there is none.
    std::shared_ptr<core::kernel::FcObjectDefinition> findShadowObject(const Guid& guid) const;

    /// Reports, if reports are enabled, that what has a master's Guid is no object definition.
    static void reportOtherType();

    /// All shadow objects in the order in which they were made.
    std::vector<std::shared_ptr<core::kernel::FcObjectDefinition>> shadowObjects;

private:
    std::shared_ptr<Data> model = std::make_shared<Data>();
};

} // namespace orv::fc

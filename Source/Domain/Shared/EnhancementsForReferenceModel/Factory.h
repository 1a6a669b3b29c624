#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "OrvExport.h"

#include <map>
#include <memory>
#include <string>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// The process-wide registry of record kinds: a prototype of each, asked for a new record when one is read from the
/// file. Kinds are registered before the first use of Enhancements; a kind that comes later misses the load. They are
/// destroyed when the library is unloaded; none is there for what calls during that.
///
/// Called from one thread at a time.
class Factory {
public:
    /// Registers the kind of the prototype, which must not be null, under its getEntityName, and takes the
    /// prototype. A prototype registered before under the same name is destroyed.
    ORV_ENHANCEMENTS_EXPORT static void registerClass(std::unique_ptr<EnhancementBase>&& prototype);

    /// A new record of the kind of exactly that name, owned by the caller; null if no such kind is
    /// registered, or if its createInstance returns null.
    ORV_ENHANCEMENTS_EXPORT static std::unique_ptr<EnhancementBase> createEntityFromName(const std::string& name);

private:
    /// Null once the library is being unloaded.
    static Factory* getOrCreate();

    std::map<std::string, std::unique_ptr<EnhancementBase>> prototypes;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

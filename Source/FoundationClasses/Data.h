#pragma once

#include "FoundationClasses/FcBase.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace orv::fc {

/// The objects of a model, found by their Guid. Owned through std::shared_ptr: objects keep a weak reference to it.
/// Called from one thread at a time.
class ORV_EXPORT Data : public std::enable_shared_from_this<Data> {
public:
    Data() = default;
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    /// A new object of the class of exactly that IFC name, or of the present class in its place if it is one of an
    /// older version; null for any other name. The Data keeps the object. Its Guid is for the caller to set, before the
    /// next search.
    std::shared_ptr<FcBase> entityCreate(const std::string& name);

    /// The object with that Guid, null if there is none. If two have it, the one that was made last.
    std::shared_ptr<FcBase> findByGuid(const Guid& guid) const;

    /// Takes the objects made since the last call into the index, under the Guid that each has now.
    void guidUpdate() const;

private:
    std::vector<std::shared_ptr<FcBase>> entities;
    mutable std::unordered_map<Guid, std::shared_ptr<FcBase>> guidIndex;
    mutable std::vector<std::shared_ptr<FcBase>> unindexedEntities;
};

} // namespace orv::fc

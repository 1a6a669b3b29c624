#pragma once

#include "FoundationClasses/FcBase.h"
#include "FoundationClasses/GuidIndex.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::fc {

/// The objects of a model, found by their Guid. Owned through std::shared_ptr: objects keep a weak reference to it.
/// Called from one thread at a time.
class ORV_FOUNDATION_CLASSES_EXPORT Data : public std::enable_shared_from_this<Data> {
public:
    Data() = default;
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    /// A new object of the class of exactly that IFC name, or of the present class in its place if it is one of an
    /// older version; null for any other name. The Data keeps the object. Its Guid is for the caller to set, once; as
    /// long as it is zero, each search looks at it again.
    std::shared_ptr<FcBase> entityCreate(const std::string& name);

    /// The object with that Guid, null if there is none. If two have it, the one that was made last.
    std::shared_ptr<FcBase> findByGuid(const Guid& guid) const;

    /// Makes the index anew, with each object under the Guid that it has now: for who changes Guids that were searched
    /// before. Takes time in proportion to the number of objects.
    void guidUpdate() const;

private:
    void indexNewEntities() const;

    std::vector<std::shared_ptr<FcBase>> entities;
    mutable GuidIndex guidIndex;
    mutable std::vector<std::size_t> unindexedEntities; // their indices
};

} // namespace orv::fc

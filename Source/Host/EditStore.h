#pragma once

#include "Host/PropertyEdits.h"
#include "Id/Guid.h"

#include <memory>
#include <string>
#include <vector>

namespace orv::host {

using domain::shared::enhancementsforreferencemodel::EnhancementBase;

/// The records of edits among others, object by object.
class StoredEdits {
public:
    /// The records outlive this.
    explicit StoredEdits(const std::vector<std::unique_ptr<EnhancementBase>>& records);

    /// Calls action with the id and a vector of the records, never null, of each object that has some, in the order of
    /// the file.
    template <typename Action>
    void forEachObject(Action action) const {
        std::vector<const PropertyEdits*> ofObject;
        for (const Entry& entry : entries) {
            if (entry.isFirst) {
                ofObject.assign(1, entry.record);
                for (std::size_t next = entry.next; next != 0; next = entries[next].next) {
                    ofObject.push_back(entries[next].record);
                }
                action(entry.record->ownerId, ofObject);
            }
        }
    }

private:
    struct Entry {
        const PropertyEdits* record;
        std::size_t next; ///< The number of the object's next one, 0 if there is none.
        bool isFirst;     ///< Of its object.
    };

    std::vector<Entry> entries;
};

/// Whether an edit of the property is stored, also one that unset it.
bool isEditStored(const Guid& id, const std::string& set, const std::string& property);

/// Stores each edit in its object's record, in place of the one of that property, and writes the file once. Its time is
/// put after that of every other edit of the property, which it would lose to otherwise. Returns whether that could be
/// done; if not, nothing has changed.
bool storeEdits(const std::vector<ObjectEdit>& edits);

} // namespace orv::host

#pragma once

#include "FoundationClasses/FcBase.h"
#include "Id/Guid.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::fc {

/// A hash map from Guids to objects, by open addressing: a search touches one or two lines of memory.
class GuidIndex {
public:
    /// Null if there is none.
    const std::shared_ptr<FcBase>& find(const Guid& guid) const {
        return slots.empty() ? none : slots[placeOf(guid)].entity;
    }

    /// Takes the place of an object that has the Guid already.
    void set(const Guid& guid, const std::shared_ptr<FcBase>& entity);

private:
    struct Slot {
        Guid guid;
        std::shared_ptr<FcBase> entity; // null if the slot is free
    };

    static inline const std::shared_ptr<FcBase> none;

    /// Of the slot that has the Guid, or else of the free one that it is to have.
    std::size_t placeOf(const Guid& guid) const {
        const std::size_t mask = slots.size() - 1;
        std::size_t place = guid.hash() & mask;
        while (slots[place].entity && slots[place].guid != guid) {
            place = (place + 1) & mask;
        }
        return place;
    }

    void grow();

    std::vector<Slot> slots; // none or a power of two, of which a third at least are free
    std::size_t count = 0;
};

} // namespace orv::fc

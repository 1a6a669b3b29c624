#pragma once

#include "FoundationClasses/FcBase.h"
#include "Id/Guid.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orv::fc {

/// A hash map from Guids to the objects of a vector, up to 2^32 of them, by open addressing. It holds a part of the
/// hash in place of the Guid, which is the object's to tell: its slots are so small that those of a million objects fit
/// into a processor's cache.
class GuidIndex {
public:
    using Entities = std::vector<std::shared_ptr<FcBase>>;

    /// The object that was put in under the Guid and still has it. Null if there is none.
    const std::shared_ptr<FcBase>& find(const Entities& entities, const Guid& guid) const {
        const std::uint32_t hash = hashOf(guid);
        for (std::size_t place = hash & mask(); slots[place].number != 0; place = (place + 1) & mask()) {
            if (slots[place].hash == hash) {
                const std::shared_ptr<FcBase>& entity = entities[slots[place].number - 1];
                if (entity->guid == guid) {
                    return entity;
                }
            }
        }
        return none;
    }

    /// Puts in the object at that index of the vector, in place of one that has its Guid already.
    void set(const Entities& entities, std::size_t index);

private:
    struct Slot {
        std::uint32_t number = 0; ///< That of the object in the vector, from 1 on; 0 if the slot is free.
        std::uint32_t hash = 0;   ///< Of the Guid under which it was put in.
    };

    static inline const std::shared_ptr<FcBase> none;

    static std::uint32_t hashOf(const Guid& guid) { return static_cast<std::uint32_t>(guid.hash()); }

    std::size_t mask() const { return slots.size() - 1; }

    void grow();

    std::vector<Slot> slots = std::vector<Slot>(1); // a power of two, of which a third at least are free
    std::size_t count = 0;
};

} // namespace orv::fc

#include "FoundationClasses/GuidIndex.h"

#include <algorithm>
#include <utility>

namespace orv::fc {

void GuidIndex::set(const Entities& entities, std::size_t index) {
    if (3 * (count + 1) > 2 * slots.size()) {
        grow();
    }
    const Guid& guid = entities[index]->guid;
    const std::uint32_t hash = hashOf(guid);
    // The slot of an object that has got another Guid since then finds nothing any more.
    const auto isToReplace = [&](const Slot& slot) {
        if (slot.hash != hash) {
            return false;
        }
        const Guid& present = entities[slot.number - 1]->guid;
        return present == guid || hashOf(present) != hash;
    };
    std::size_t place = hash & mask();
    while (slots[place].number != 0 && !isToReplace(slots[place])) {
        place = (place + 1) & mask();
    }
    count += slots[place].number == 0 ? 1 : 0;
    slots[place] = {static_cast<std::uint32_t>(index + 1), hash};
}

void GuidIndex::grow() {
    constexpr std::size_t least = 16;
    const std::vector<Slot> former = std::exchange(slots, std::vector<Slot>(std::max(least, 2 * slots.size())));
    for (const Slot& slot : former) {
        std::size_t place = slot.hash & mask();
        while (slots[place].number != 0) {
            place = (place + 1) & mask();
        }
        if (slot.number != 0) {
            slots[place] = slot;
        }
    }
}

} // namespace orv::fc

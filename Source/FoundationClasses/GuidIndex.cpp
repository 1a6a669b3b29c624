#include "FoundationClasses/GuidIndex.h"

#include <algorithm>
#include <utility>

namespace orv::fc {

void GuidIndex::set(const Guid& guid, const std::shared_ptr<FcBase>& entity) {
    if (3 * (count + 1) > 2 * slots.size()) {
        grow();
    }
    Slot& slot = slots[placeOf(guid)];
    count += slot.entity ? 0 : 1;
    slot = {guid, entity};
}

void GuidIndex::grow() {
    constexpr std::size_t least = 16;
    const std::vector<Slot> former = std::exchange(slots, std::vector<Slot>(std::max(least, 2 * slots.size())));
    for (const Slot& slot : former) {
        if (slot.entity) {
            slots[placeOf(slot.guid)] = slot;
        }
    }
}

} // namespace orv::fc

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orv::host {

/// A hash table of the numbers of items that are kept elsewhere.
class NumberTable {
public:
    void clear() {
        // The slots go: after an object with many items, wiping them all would cost each of the small ones that follow.
        slots.clear();
        used = 0;
    }

    /// The number of the item with that hash for which isSame(number) holds; if there is none, newNumber, which is
    /// there from now on.
    template <typename IsSame>
    std::uint32_t findOrAdd(std::uint64_t hash, std::uint32_t newNumber, IsSame isSame) {
        if (2 * (used + 1) > slots.size()) {
            grow();
        }
        Slot& slot = slots[slotFor(hash, isSame)];
        if (slot.isFree) {
            slot = {hash, newNumber, false};
            ++used;
        }
        return slot.number;
    }

private:
    struct Slot {
        std::uint64_t hash = 0;
        std::uint32_t number = 0;
        bool isFree = true;
    };

    template <typename IsSame>
    std::size_t slotFor(std::uint64_t hash, IsSame isSame) const {
        std::size_t slot = hash % slots.size();
        while (!slots[slot].isFree && !(slots[slot].hash == hash && isSame(slots[slot].number))) {
            slot = (slot + 1) % slots.size();
        }
        return slot;
    }

    void grow() {
        constexpr std::size_t fewest = 8;
        const std::vector<Slot> before = std::exchange(slots, std::vector<Slot>(std::max(fewest, 2 * slots.size())));
        for (const Slot& slot : before) {
            if (!slot.isFree) {
                slots[slotFor(slot.hash, [](std::uint32_t /*number*/) { return false; })] = slot;
            }
        }
    }

    std::vector<Slot> slots;
    std::size_t used = 0;
};

} // namespace orv::host

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orv::fc {

/// An open-addressing hash table of the rows of a table by their names, built by the compiler. It holds the numbers of
/// the rows, from 1 on, and no addresses. Table has, all static: rowCount, nameOf(number), hashOf(name) and
/// areSame(name, name).
template <typename Table>
class RowIndex {
public:
    constexpr RowIndex() {
        for (std::size_t number = 1; number <= Table::rowCount; ++number) {
            slots[slotOf(Table::nameOf(number))] = static_cast<std::uint16_t>(number);
        }
    }

    /// The number of the row of that name, 0 if there is none.
    constexpr std::size_t find(std::string_view name) const { return slots[slotOf(name)]; }

private:
    static constexpr std::size_t slotCount = std::bit_ceil(2 * Table::rowCount);

    /// The slot of that name, or else the free one where it would stand.
    constexpr std::size_t slotOf(std::string_view name) const {
        std::size_t slot = Table::hashOf(name) % slotCount;
        while (slots[slot] != 0 && !Table::areSame(Table::nameOf(slots[slot]), name)) {
            slot = (slot + 1) % slotCount;
        }
        return slot;
    }

    std::array<std::uint16_t, slotCount> slots{}; ///< 0 if the slot is free.
};

} // namespace orv::fc

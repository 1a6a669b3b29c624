#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace orv::fc {

/// A hash table of the elements of a public vector by their names.
///
/// The table is wrong as soon as a host has changed the vector. So it keeps which objects it was made of, and each
/// search compares them with those that the vector holds now, in one run over the pointers that looks into no object.
/// What was appended is taken in; after any other change the table is made anew. An object that is replaced is noticed
/// even where the new one lies in the same memory. A name that is changed in place is noticed when a search meets the
/// object under its old one; a host that renames an object puts it into the vector anew.
template <typename Named>
class NameTable {
public:
    using Elements = std::vector<std::shared_ptr<Named>>;

    /// The first element of exactly that name that isSought accepts, null if there is none.
    template <typename IsSought>
    std::shared_ptr<Named> find(const Elements& elements, const std::string& name, const IsSought& isSought) {
        const std::size_t hash = std::hash<std::string>()(name);
        if (!isUpToDate(elements) || hasRenamed(elements, hash, name)) {
            rebuild(elements);
        }
        for (std::size_t slot = hash & mask(); slots[slot].number != 0; slot = (slot + 1) & mask()) {
            const auto& element = elements[slots[slot].number - 1];
            if (element->name == name && isSought(*element)) {
                return element;
            }
        }
        return nullptr;
    }

private:
    static constexpr std::size_t leastSlots = 128;

    struct Slot {
        std::uint32_t number = 0; ///< That of the element, from 1 on; 0 if the slot is free.
        std::uint32_t check = 0;  ///< A part of the hash of the name.
    };

    /// The upper half of the hash.
    static std::uint32_t checkOf(std::size_t hash) {
        return static_cast<std::uint32_t>(hash >> static_cast<unsigned>(std::numeric_limits<std::size_t>::digits / 2));
    }

    std::size_t mask() const { return slots.size() - 1; }

    /// Whether the table is that of the elements, after it took in those that were appended.
    bool isUpToDate(const Elements& elements) {
        if (known.empty() || known.size() > elements.size()) {
            return false;
        }
        for (std::size_t index = 0; index < known.size(); ++index) {
            if (known[index].owner_before(elements[index]) || elements[index].owner_before(known[index])) {
                return false;
            }
        }
        return append(elements);
    }

    /// Whether an element that has the hash of that name in the table bears another one.
    bool hasRenamed(const Elements& elements, std::size_t hash, const std::string& name) const {
        for (std::size_t slot = hash & mask(); slots[slot].number != 0; slot = (slot + 1) & mask()) {
            if (slots[slot].check == checkOf(hash) && elements[slots[slot].number - 1]->name != name) {
                return true;
            }
        }
        return false;
    }

    void rebuild(const Elements& elements) {
        known.clear();
        std::size_t slotCount = leastSlots;
        while (slotCount < 4 * elements.size()) {
            slotCount *= 2;
        }
        slots.assign(slotCount, Slot());
        append(elements);
    }

    /// Takes in those that aren't known yet. Returns false, and leaves the rest, if there is no room for them.
    bool append(const Elements& elements) {
        while (known.size() < elements.size()) {
            if (2 * (known.size() + 1) > slots.size()) {
                return false;
            }
            const auto& element = elements[known.size()];
            const std::size_t hash = std::hash<std::string>()(element->name);
            known.push_back(element);
            std::size_t slot = hash & mask();
            while (slots[slot].number != 0) {
                slot = (slot + 1) & mask();
            }
            slots[slot] = {static_cast<std::uint32_t>(known.size()), checkOf(hash)};
        }
        return true;
    }

    /// The elements that the table is of. Weak references keep their memory from being used anew.
    std::vector<std::weak_ptr<Named>> known;

    std::vector<Slot> slots; // a power of two, of which half at least are free; equal names stand in order
};

} // namespace orv::fc

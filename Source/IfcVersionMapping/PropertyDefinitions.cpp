#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>

namespace orv::ifc {

using def::xml::Def;
using def::xml::PropertyKind;

namespace {

constexpr Def rows[] = {
#define SINGLE(set, property, type, version) {#set, #property, PropertyKind::Single, #type, {}, {}, #version},
#define UNTYPED_SINGLE(set, property, version) {#set, #property, PropertyKind::Single, {}, {}, {}, #version},
#define ENUMERATED(set, property, type, version, values)                                                               \
    {#set, #property, PropertyKind::Enumerated, #type, {}, values, #version},
#define BOUNDED(set, property, type, version) {#set, #property, PropertyKind::Bounded, #type, {}, {}, #version},
#define LIST(set, property, type, version) {#set, #property, PropertyKind::List, #type, {}, {}, #version},
#define TABLE(set, property, type, definedType, version)                                                               \
    {#set, #property, PropertyKind::Table, #type, #definedType, {}, #version},
#define REFERENCE(set, property, type, version) {#set, #property, PropertyKind::Reference, #type, {}, {}, #version},
#define TYPED_REFERENCE(set, property, type, valueType, version)                                                       \
    {#set, #property, PropertyKind::Reference, #type, #valueType, {}, #version},
#include "IfcVersionMapping/PropertyDefinitions.inc"
#undef SINGLE
#undef UNTYPED_SINGLE
#undef ENUMERATED
#undef BOUNDED
#undef LIST
#undef TABLE
#undef REFERENCE
#undef TYPED_REFERENCE
};

static_assert(std::is_sorted(std::begin(rows), std::end(rows),
                             [](const Def& a, const Def& b) { return a.propertySet < b.propertySet; }));

constexpr std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 32U);
}

constexpr std::uint64_t wordAt(const char* text) {
    std::array<char, sizeof(std::uint64_t)> letters{};
    std::copy_n(text, letters.size(), letters.begin());
    return std::bit_cast<std::uint64_t>(letters);
}

/// Takes eight letters at a time; the last eight may overlap those before them.
constexpr std::uint64_t hashOf(std::string_view name) {
    std::uint64_t hash = name.size();
    if (name.size() < sizeof(std::uint64_t)) {
        for (const char letter : name) {
            hash = mixed(hash, static_cast<unsigned char>(letter));
        }
        return hash;
    }
    const char* const last = name.data() + name.size() - sizeof(std::uint64_t);
    for (const char* letters = name.data(); letters < last; letters += sizeof(std::uint64_t)) {
        hash = mixed(hash, wordAt(letters));
    }
    return mixed(hash, wordAt(last));
}

constexpr std::uint64_t hashOf(std::string_view set, std::string_view property) {
    return mixed(std::rotl(hashOf(set), 1), hashOf(property));
}

/// An open-addressing hash table of the rows, built by the compiler. It holds numbers, which unlike pointers needn't be
/// adjusted when the library is loaded.
class Index {
public:
    constexpr Index() {
        for (std::size_t i = 0; i < std::size(rows); ++i) {
            const std::uint64_t hash = hashOf(rows[i].propertySet, rows[i].property);
            Slot& slot = slots[slotFor(hash, rows[i].propertySet, rows[i].property)];
            if (slot.number != 0) {
                throw std::logic_error("a property is defined twice"); // which stops the compiler
            }
            slot = {static_cast<std::uint16_t>(i + 1), checkOf(hash)};
        }
    }

    const Def* find(std::string_view set, std::string_view property) const {
        const std::uint16_t number = slots[slotFor(hashOf(set, property), set, property)].number;
        return number == 0 ? nullptr : &rows[number - 1];
    }

private:
    struct Slot {
        std::uint16_t number; ///< That of the row, from 1 on; 0 if the slot is empty.
        std::uint16_t check;  ///< A part of the hash that tells most other names apart without a look at the row.
    };

    static constexpr std::size_t slotCount = 16384;
    static_assert(slotCount > 2 * std::size(rows));

    static constexpr std::uint16_t checkOf(std::uint64_t hash) { return static_cast<std::uint16_t>(hash >> 48U); }

    /// The slot of that property, or the empty one where it would stand.
    constexpr std::size_t slotFor(std::uint64_t hash, std::string_view set, std::string_view property) const {
        std::size_t slot = hash % slotCount;
        while (slots[slot].number != 0 && !holds(slots[slot], hash, set, property)) {
            slot = (slot + 1) % slotCount;
        }
        return slot;
    }

    static constexpr bool holds(Slot slot, std::uint64_t hash, std::string_view set, std::string_view property) {
        const Def& row = rows[slot.number - 1];
        return slot.check == checkOf(hash) && row.property == property && row.propertySet == set;
    }

    std::array<Slot, slotCount> slots{};
};

constexpr Index definitionIndex;

} // namespace

std::span<const Def> definitions() {
    return rows;
}

const Def* findSchemaDefForProperty(const std::string& pset, const std::string& property) {
    return definitionIndex.find(pset, property);
}

} // namespace orv::ifc

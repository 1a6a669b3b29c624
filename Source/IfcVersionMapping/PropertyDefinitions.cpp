#include "FoundationClasses/NameHash.h"
#include "IfcVersionMapping/OwnDefinitions.h"
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
using def::xml::DefText;
using def::xml::PropertyKind;

namespace {

/// As they are published. For the compiler alone, which makes of them what the library carries.
constexpr Def published[] = {
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

static_assert(std::is_sorted(std::begin(published), std::end(published), [](const Def& a, const Def& b) {
    return std::string_view(a.propertySet) < std::string_view(b.propertySet);
}));

constexpr DefText Def::*const texts[] = {&Def::propertySet,      &Def::property,          &Def::valueType,
                                         &Def::definedValueType, &Def::enumerationValues, &Def::source};

/// Whether the text is to be stored. One that the definition before has too is stored once.
constexpr bool isNew(std::size_t row, DefText Def::*text) {
    return row == 0 || published[row].*text != std::string_view(published[row - 1].*text);
}

constexpr std::size_t lengthOfTexts() {
    std::size_t length = 0;
    for (std::size_t row = 0; row < std::size(published); ++row) {
        for (const auto text : texts) {
            length += isNew(row, text) ? std::string_view(published[row].*text).size() : 0;
        }
    }
    return length;
}

/// The definitions and, one after the other, their texts. Holds no addresses.
struct Carried {
    constexpr Carried() {
        std::size_t used = 0;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            rows[row].kind = published[row].kind;
            for (const auto text : texts) {
                if (!isNew(row, text)) {
                    rows[row].*text = rows[row - 1].*text;
                    continue;
                }
                const std::string_view content = published[row].*text;
                content.copy(&letters[used], content.size());
                rows[row].*text = DefText(static_cast<std::uint32_t>(used), static_cast<std::uint32_t>(content.size()));
                used += content.size();
            }
        }
    }

    std::array<Def, std::size(published)> rows{};
    std::array<char, lengthOfTexts() + 1> letters{};
};

constexpr Carried carriedDefinitions;

constexpr std::uint64_t hashOf(std::string_view set, std::string_view property) {
    return fc::mixed(std::rotl(fc::hashOf(set), 1), fc::hashOf(property));
}

/// An open-addressing hash table of the definitions, built by the compiler. It holds their numbers, no addresses.
class Index {
public:
    constexpr Index() {
        for (std::size_t row = 0; row < std::size(published); ++row) {
            const std::uint64_t hash = hashOf(published[row].propertySet, published[row].property);
            Slot& slot = slots[slotFor(published, hash, published[row].propertySet, published[row].property)];
            if (slot.number != 0) {
                throw std::logic_error("a property is defined twice"); // which stops the compiler
            }
            slot = {static_cast<std::uint16_t>(row + 1), checkOf(hash)};
        }
    }

    const Def* find(std::string_view set, std::string_view property) const {
        const auto& rows = carriedDefinitions.rows;
        const std::uint16_t number = slots[slotFor(rows, hashOf(set, property), set, property)].number;
        return number == 0 ? nullptr : &rows[number - 1];
    }

private:
    struct Slot {
        std::uint16_t number; ///< That of the row, from 1 on; 0 if the slot is empty.
        std::uint16_t check;  ///< A part of the hash that tells most other names apart without a look at the row.
    };

    static constexpr std::size_t slotCount = 16384;
    static_assert(slotCount > 2 * std::size(published));

    static constexpr std::uint16_t checkOf(std::uint64_t hash) { return static_cast<std::uint16_t>(hash >> 48U); }

    /// The slot of that property, or the empty one where it would stand.
    constexpr std::size_t slotFor(std::span<const Def> rows, std::uint64_t hash, std::string_view set,
                                  std::string_view property) const {
        std::size_t slot = hash % slotCount;
        while (slots[slot].number != 0 &&
               !(slots[slot].check == checkOf(hash) && isOf(rows[slots[slot].number - 1], set, property))) {
            slot = (slot + 1) % slotCount;
        }
        return slot;
    }

    static constexpr bool isOf(const Def& row, std::string_view set, std::string_view property) {
        return row.property == property && row.propertySet == set;
    }

    std::array<Slot, slotCount> slots{};
};

constexpr Index definitionIndex;

} // namespace

std::string_view def::xml::DefText::carried() const {
    return {&carriedDefinitions.letters[place], length};
}

std::span<const Def> definitions() {
    return carriedDefinitions.rows;
}

const Def* findPublishedDefinition(std::string_view pset, std::string_view property) {
    return definitionIndex.find(pset, property);
}

const Def* findSchemaDefForProperty(const std::string& pset, const std::string& property) {
    const Def* const found = findPublishedDefinition(pset, property);
    return found == nullptr && hasOwnDefinitions ? findOwnDefinition(pset, property) : found;
}

} // namespace orv::ifc

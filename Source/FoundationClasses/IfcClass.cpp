#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace orv::fc {

namespace {

constexpr IfcClass presentClasses[] = {
#define IFC_CLASS(name, kindNumber, lastOfKind) IfcClass{#name, kindNumber, lastOfKind},
#define IFC_RENAMED_CLASS(name, presentName)
#define IFC_OLDER_CLASS(name, presentClass)
#include "FoundationClasses/IfcClasses.inc"
#undef IFC_CLASS
#undef IFC_RENAMED_CLASS
#undef IFC_OLDER_CLASS
};

constexpr IfcClass present(std::string_view name) {
    return *std::find_if(std::begin(presentClasses), std::end(presentClasses),
                         [name](const IfcClass& row) { return row.name == name; });
}

constexpr IfcClass renamed(std::string_view name, std::string_view presentName) {
    const IfcClass row = present(presentName);
    return {name, row.kindNumber, row.lastOfKind};
}

constexpr IfcClass older(std::string_view name, std::string_view presentClass) {
    return {name, present(presentClass).kindNumber, 0};
}

constexpr IfcClass olderClasses[] = {
#define IFC_CLASS(name, kindNumber, lastOfKind)
#define IFC_RENAMED_CLASS(name, presentName) renamed(#name, #presentName),
#define IFC_OLDER_CLASS(name, presentClass) older(#name, #presentClass),
#include "FoundationClasses/IfcClasses.inc"
#undef IFC_CLASS
#undef IFC_RENAMED_CLASS
#undef IFC_OLDER_CLASS
};

constexpr char toUpper(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

constexpr bool equalsInAnyCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return toUpper(x) == toUpper(y); });
}

/// An open-addressing hash table of both lists, built by the compiler.
class Index {
public:
    constexpr Index() {
        for (const IfcClass& row : presentClasses) {
            insert(row);
        }
        for (const IfcClass& row : olderClasses) {
            insert(row);
        }
    }

    constexpr const IfcClass* find(std::string_view name) const {
        std::size_t slot = firstSlot(name);
        while (slots[slot] != nullptr && !equalsInAnyCase(slots[slot]->name, name)) {
            slot = nextSlot(slot);
        }
        return slots[slot];
    }

private:
    static constexpr std::size_t slotCount = 2048;
    static_assert(slotCount > 2 * (std::size(presentClasses) + std::size(olderClasses)));

    /// FNV-1a over the upper-case letters.
    static constexpr std::size_t firstSlot(std::string_view name) {
        std::uint32_t hash = 2166136261U;
        for (const char letter : name) {
            hash = (hash ^ static_cast<unsigned char>(toUpper(letter))) * 16777619U;
        }
        return (hash ^ (hash >> 16U)) % slotCount;
    }

    static constexpr std::size_t nextSlot(std::size_t slot) { return (slot + 1) % slotCount; }

    constexpr void insert(const IfcClass& row) {
        std::size_t slot = firstSlot(row.name);
        while (slots[slot] != nullptr) {
            slot = nextSlot(slot);
        }
        slots[slot] = &row;
    }

    std::array<const IfcClass*, slotCount> slots{};
};

constexpr Index classIndex;

} // namespace

const IfcClass* IfcClass::find(std::string_view name) {
    return classIndex.find(name);
}

const IfcClass* IfcClass::ofNumber(std::uint32_t number) {
    const auto* const row =
        std::lower_bound(std::begin(presentClasses), std::end(presentClasses), number,
                         [](const IfcClass& candidate, std::uint32_t wanted) { return candidate.kindNumber < wanted; });
    return row != std::end(presentClasses) && row->kindNumber == number ? row : nullptr;
}

} // namespace orv::fc

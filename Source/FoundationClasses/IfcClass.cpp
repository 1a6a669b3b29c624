#include "FoundationClasses/IfcClass.h"

#include "FoundationClasses/NameHash.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace orv::fc {

namespace {

constexpr IfcClass presentClasses[] = {
#define IFC_CLASS(name, kindNumber, lastOfKind) IfcClass{std::string_view(#name), kindNumber, lastOfKind},
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

/// Looks at all letters, several in a step, which is quicker than to stop at the first that differs.
constexpr bool equalsInAnyCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    unsigned char difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        difference |= static_cast<unsigned char>(toUpper(a[i]) ^ toUpper(b[i]));
    }
    return difference == 0;
}

/// An open-addressing hash table of both lists, built by the compiler. It holds the numbers of the rows in the one list
/// followed by the other, no addresses.
class Index {
public:
    constexpr Index() {
        for (std::uint16_t number = 1; number <= rowCount; ++number) {
            insert(number);
        }
    }

    const IfcClass* find(std::string_view name) const {
        std::size_t slot = firstSlot(name);
        while (slots[slot] != 0 && !equalsInAnyCase(row(slots[slot]).name, name)) {
            slot = nextSlot(slot);
        }
        return slots[slot] == 0 ? nullptr : &row(slots[slot]);
    }

private:
    static constexpr std::size_t rowCount = std::size(presentClasses) + std::size(olderClasses);
    static constexpr std::size_t slotCount = 2048;
    static_assert(slotCount > 2 * rowCount);

    /// The row of that number, from 1 on.
    static constexpr const IfcClass& row(std::size_t number) {
        return number <= std::size(presentClasses) ? presentClasses[number - 1]
                                                   : olderClasses[number - 1 - std::size(presentClasses)];
    }

    static constexpr std::size_t firstSlot(std::string_view name) {
        constexpr std::uint64_t letterCase = 0x2020202020202020U;
        return hashOf(name, letterCase) % slotCount;
    }

    static constexpr std::size_t nextSlot(std::size_t slot) { return (slot + 1) % slotCount; }

    constexpr void insert(std::uint16_t number) {
        std::size_t slot = firstSlot(row(number).name);
        while (slots[slot] != 0) {
            slot = nextSlot(slot);
        }
        slots[slot] = number;
    }

    std::array<std::uint16_t, slotCount> slots{}; ///< 0 if the slot is empty.
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

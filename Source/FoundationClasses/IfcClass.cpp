#include "FoundationClasses/IfcClass.h"

#include "FoundationClasses/NameHash.h"
#include "FoundationClasses/RowIndex.h"

#include <algorithm>
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

/// The rows of both lists, numbered through. Letters of either case are the same in their names.
struct ClassTable {
    static constexpr std::size_t rowCount = std::size(presentClasses) + std::size(olderClasses);

    static constexpr const IfcClass& row(std::size_t number) {
        return number <= std::size(presentClasses) ? presentClasses[number - 1]
                                                   : olderClasses[number - 1 - std::size(presentClasses)];
    }

    static constexpr std::string_view nameOf(std::size_t number) { return row(number).name; }

    static constexpr std::uint64_t hashOf(std::string_view name) {
        constexpr std::uint64_t letterCase = 0x2020202020202020U;
        return fc::hashOf(name, letterCase);
    }

    static constexpr bool areSame(std::string_view a, std::string_view b) { return equalsInAnyCase(a, b); }
};

constexpr RowIndex<ClassTable> classIndex;

} // namespace

const IfcClass* IfcClass::find(std::string_view name) {
    const std::size_t number = classIndex.find(name);
    return number == 0 ? nullptr : &ClassTable::row(number);
}

const IfcClass* IfcClass::ofNumber(std::uint32_t number) {
    const auto* const row =
        std::lower_bound(std::begin(presentClasses), std::end(presentClasses), number,
                         [](const IfcClass& candidate, std::uint32_t wanted) { return candidate.kindNumber < wanted; });
    return row != std::end(presentClasses) && row->kindNumber == number ? row : nullptr;
}

} // namespace orv::fc

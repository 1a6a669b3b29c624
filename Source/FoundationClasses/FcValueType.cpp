#include "FoundationClasses/FcValueType.h"

#include "FoundationClasses/NameHash.h"
#include "FoundationClasses/RowIndex.h"

#include <cstddef>
#include <iterator>
#include <limits>

namespace orv::fc {

namespace {

constexpr FcValueType valueTypes[] = {
#define VALUE_TYPE(name, content) FcValueType{std::string_view(#name), FcContent::content},
#include "FoundationClasses/FcValueTypes.inc"
#undef VALUE_TYPE
};

struct TypeTable {
    static constexpr std::size_t rowCount = std::size(valueTypes);

    static constexpr std::string_view nameOf(std::size_t number) { return valueTypes[number - 1].name; }

    static constexpr std::uint64_t hashOf(std::string_view name) { return fc::hashOf(name); }

    static constexpr bool areSame(std::string_view a, std::string_view b) { return a == b; }
};

static_assert(TypeTable::rowCount <= std::numeric_limits<std::uint8_t>::max());

constexpr RowIndex<TypeTable> typeIndex;

} // namespace

const FcValueType* FcValueType::find(std::string_view name) {
    return ofNumber(static_cast<std::uint8_t>(typeIndex.find(name)));
}

const FcValueType* FcValueType::ofNumber(std::uint8_t number) {
    return number == 0 ? nullptr : &valueTypes[number - 1];
}

std::uint8_t FcValueType::numberOf(const FcValueType* row) {
    return row == nullptr ? std::uint8_t{0} : static_cast<std::uint8_t>(row - valueTypes + 1);
}

} // namespace orv::fc

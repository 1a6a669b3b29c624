#include "FoundationClasses/FcValueType.h"

#include <algorithm>
#include <iterator>

namespace orv::fc {

namespace {

constexpr FcValueType valueTypes[] = {
#define VALUE_TYPE(name, content) FcValueType{std::string_view(#name), FcContent::content},
#include "FoundationClasses/FcValueTypes.inc"
#undef VALUE_TYPE
};

constexpr bool precedes(const FcValueType& row, std::string_view name) {
    return std::string_view(row.name) < name;
}

static_assert(std::is_sorted(std::begin(valueTypes), std::end(valueTypes),
                             [](const FcValueType& a, const FcValueType& b) { return precedes(a, b.name); }));

} // namespace

const FcValueType* FcValueType::find(std::string_view name) {
    const auto* const row = std::lower_bound(std::begin(valueTypes), std::end(valueTypes), name, precedes);
    return row != std::end(valueTypes) && row->name == name ? row : nullptr;
}

} // namespace orv::fc

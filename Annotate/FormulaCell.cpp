#include "Annotate/FormulaCell.h"

#include "Host/FieldText.h"

#include <algorithm>
#include <array>

namespace annotate {

namespace {

/// Blanks and marks that programs pass over at the beginning of a cell: space, no-break space, zero-width space,
/// ideographic space and byte-order mark.
constexpr std::array<std::string_view, 5> passedOver{" ", "\xC2\xA0", "\xE2\x80\x8B", "\xE3\x80\x80", "\xEF\xBB\xBF"};

/// The last four are the wide forms of = + - @, which East Asian versions take for the narrow ones.
constexpr std::array<std::string_view, 11> beginnings{
    "=", "+", "-", "@", "\t", "\r", "\n", "\xEF\xBC\x9D", "\xEF\xBC\x8B", "\xEF\xBC\x8D", "\xEF\xBC\xA0"};

template <std::size_t count>
std::size_t lengthOfOne(std::string_view text, const std::array<std::string_view, count>& starts) {
    const auto* const found =
        std::find_if(starts.begin(), starts.end(), [text](std::string_view start) { return text.starts_with(start); });
    return found == starts.end() ? 0 : found->size();
}

bool isPlainNumber(std::string_view text) {
    double number = 0;
    return text.find_first_not_of("+-.0123456789eE") == std::string_view::npos && orv::host::take(text, number);
}

bool mayBeFormula(std::string_view text) {
    if (isPlainNumber(text)) {
        return false;
    }
    while (const std::size_t length = lengthOfOne(text, passedOver)) {
        text.remove_prefix(length);
    }
    return lengthOfOne(text, beginnings) > 0;
}

bool isShieldable(std::string_view text) {
    return mayBeFormula(text.substr(std::min(text.find_first_not_of('\''), text.size())));
}

} // namespace

std::string shieldedCell(std::string_view text) {
    return std::string(isShieldable(text) ? "'" : "").append(text);
}

std::string unshieldedCell(std::string_view text) {
    return std::string(text.substr(text.starts_with('\'') && isShieldable(text) ? 1 : 0));
}

} // namespace annotate

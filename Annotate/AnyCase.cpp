#include "Annotate/AnyCase.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utf8proc.h>

namespace annotate {

namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

/// As folding does with ASCII.
char folded(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isFoldedTo(char letter, char wanted) {
    return folded(letter) == wanted;
}

/// The text under the options of utf8proc; none if it isn't UTF-8.
std::optional<std::string> mapped(std::string_view text, int options) {
    utf8proc_uint8_t* made = nullptr;
    const utf8proc_ssize_t size =
        ::utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), // NOLINT(*-reinterpret-cast)
                       static_cast<utf8proc_ssize_t>(text.size()), &made,
                       static_cast<utf8proc_option_t>(options)); // NOLINT(*-enum-casting): flags
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(made, &std::free);
    return size < 0 ? std::nullopt : std::optional(std::string(made, made + size));
}

/// Without differences of case, and each letter with its marks in its one composed form.
std::optional<std::string> foldedText(std::string_view text) {
    if (isAscii(text)) {
        std::string lower(text);
        std::transform(lower.begin(), lower.end(), lower.begin(), folded);
        return lower;
    }
    // An iota below a letter becomes a letter behind it, so the other marks have to stand before it then.
    const std::optional<std::string> decomposed = mapped(text, UTF8PROC_STABLE | UTF8PROC_DECOMPOSE);
    return decomposed ? mapped(*decomposed, UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD) : std::nullopt;
}

} // namespace

AnyCase::AnyCase(std::string_view comparedText) : text(comparedText), folded(foldedText(comparedText)) {}

bool AnyCase::equals(std::string_view other) const {
    if (other == text) {
        return true;
    }
    return folded && foldedText(other) == folded;
}

bool AnyCase::isIn(std::string_view other) const {
    if (text.empty()) {
        return true;
    }
    if (!folded) {
        return false;
    }
    if (isAscii(other)) { // most are, and need no copy
        return std::search(other.begin(), other.end(), folded->begin(), folded->end(), isFoldedTo) != other.end();
    }
    const std::optional<std::string> otherFolded = foldedText(other);
    return otherFolded && otherFolded->find(*folded) != std::string::npos;
}

} // namespace annotate

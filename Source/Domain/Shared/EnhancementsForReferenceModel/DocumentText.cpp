#include "Domain/Shared/EnhancementsForReferenceModel/DocumentText.h"

#include <algorithm>

namespace orv::domain::shared::enhancementsforreferencemodel {

void DocumentText::startDraft(std::size_t expectedSize) {
    text.reserve(expectedSize);
    same = 0;
}

DocumentText::Range DocumentText::append(std::string_view piece) {
    if (!isCut && getText().substr(same, piece.size()) == piece) {
        same += piece.size();
        return {same - piece.size(), same};
    }
    if (!isCut) {
        cut();
    }
    appendToText(piece);
    return {text.size() - piece.size(), text.size()};
}

DocumentText::Range DocumentText::repeat(const Range& range) {
    const std::size_t size = range.end - range.begin;
    if (!isCut && range.begin == same) {
        same += size;
        return range;
    }
    const std::size_t shared = isCut ? std::clamp(same, range.begin, range.end) : range.end;
    std::string piece;
    if (range.begin < shared) {
        piece = getText().substr(range.begin, shared - range.begin);
    }
    if (shared < range.end) {
        piece += std::string_view(formerEnd).substr(shared - same, range.end - shared);
    }
    return append(piece);
}

void DocumentText::endDraft() {
    if (!isCut && same < text.size()) {
        cut();
    }
    if (isCut) {
        drafted = accepted;
        drafted.update(getText(), same);
    }
}

void DocumentText::accept() {
    if (isCut) {
        accepted = drafted;
    }
    isCut = false;
}

void DocumentText::discard() {
    if (isCut) {
        text.resize(same);
        appendToText(formerEnd);
    }
    isCut = false;
}

utilities::Replacement DocumentText::getReplacement() const {
    if (!isCut) {
        return {{}, text.size(), getDigest(), getText(), getDigest()};
    }
    auto change = utilities::Change::between(formerEnd, getText().substr(same));
    change.position += same;
    return {change, same + formerEnd.size(), getDigest(), getText(), drafted.get()};
}

std::string DocumentText::getFormerText() const {
    return isCut ? std::string(getText().substr(0, same)) + formerEnd : std::string(getText());
}

void DocumentText::cut() {
    formerEnd = getText().substr(same);
    text.resize(same);
    isCut = true;
}

void DocumentText::appendToText(std::string_view piece) {
    constexpr std::size_t least = 4096;
    if (text.capacity() - text.size() < piece.size()) {
        text.reserve(text.size() + std::max({piece.size(), text.size() / 8, least}));
    }
    text.insert(text.end(), piece.begin(), piece.end());
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

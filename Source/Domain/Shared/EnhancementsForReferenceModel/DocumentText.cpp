#include "Domain/Shared/EnhancementsForReferenceModel/DocumentText.h"

#include <algorithm>

namespace orv::domain::shared::enhancementsforreferencemodel {

void DocumentText::startDraft(std::size_t expectedSize) {
    text.reserve(expectedSize);
    sharedSize = 0;
}

DocumentText::Range DocumentText::append(std::string_view piece) {
    if (!differs && getText().substr(sharedSize, piece.size()) == piece) {
        sharedSize += piece.size();
        return {sharedSize - piece.size(), sharedSize};
    }
    if (!differs) {
        cut();
    }
    appendToText(piece);
    return {text.size() - piece.size(), text.size()};
}

DocumentText::Range DocumentText::repeat(const Range& range) {
    const std::size_t size = range.end - range.begin;
    if (!differs && range.begin == sharedSize) {
        sharedSize += size;
        return range;
    }
    // Of what was accepted last, the part behind sharedSize is in formerEnd once the draft differs.
    const std::size_t shared = differs ? std::clamp(sharedSize, range.begin, range.end) : range.end;
    std::string piece;
    if (range.begin < shared) {
        piece = getText().substr(range.begin, shared - range.begin);
    }
    if (shared < range.end) {
        piece += std::string_view(formerEnd).substr(shared - sharedSize, range.end - shared);
    }
    return append(piece);
}

void DocumentText::endDraft() {
    if (!differs && sharedSize < text.size()) {
        cut();
    }
    if (differs) {
        drafted = accepted;
        drafted.update(getText(), sharedSize);
    }
}

void DocumentText::accept() {
    if (differs) {
        accepted = drafted;
    }
    differs = false;
}

void DocumentText::discard() {
    if (differs) {
        text.resize(sharedSize);
        appendToText(formerEnd);
    }
    differs = false;
}

utilities::Replacement DocumentText::getReplacement() const {
    if (!differs) {
        return {{}, text.size(), getAcceptedDigest(), getText(), getAcceptedDigest()};
    }
    auto change = utilities::Change::between(formerEnd, getText().substr(sharedSize));
    change.position += sharedSize;
    return {change, sharedSize + formerEnd.size(), getAcceptedDigest(), getText(), drafted.get()};
}

std::string DocumentText::getFormerText() const {
    return differs ? std::string(getText().substr(0, sharedSize)) + formerEnd : std::string(getText());
}

void DocumentText::cut() {
    formerEnd = getText().substr(sharedSize);
    text.resize(sharedSize);
    differs = true;
}

void DocumentText::appendToText(std::string_view piece) {
    constexpr std::size_t least = 4096;
    if (text.capacity() - text.size() < piece.size()) {
        text.reserve(text.size() + std::max({piece.size(), text.size() / 8, least}));
    }
    text.insert(text.end(), piece.begin(), piece.end());
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

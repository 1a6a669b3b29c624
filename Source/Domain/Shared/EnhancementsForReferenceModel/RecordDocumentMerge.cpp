#include "Domain/Shared/EnhancementsForReferenceModel/ElementMatch.h"
#include "Domain/Shared/EnhancementsForReferenceModel/RecordDocument.h"

#include <map>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

/// The name of the element, and the owner that it tells.
std::string subjectOf(std::string_view element) {
    constexpr std::string_view ownerTag = "<OwnerId>";
    const std::string_view tag = element.substr(1);
    std::string subject(tag.substr(0, tag.find_first_of(" \t\r\n/>")));
    if (const std::size_t owner = element.find(ownerTag); owner != std::string_view::npos) {
        const std::string_view text = element.substr(owner);
        subject.append(text.substr(0, text.find('<', 1)));
    }
    return subject;
}

ElementKey keyOf(std::string_view element) {
    return {utilities::Digest::of(element), utilities::Digest::of(subjectOf(element)).first};
}

std::vector<ElementKey> keysOf(const xml::Outline& outline) {
    std::vector<ElementKey> keys;
    for (std::size_t number = 0; number < outline.size(); ++number) {
        keys.push_back(keyOf(outline[number].element));
    }
    return keys;
}

/// Whether it is neither text nor a comment or a processing instruction.
bool isElement(std::string_view markup) {
    return markup.size() > 1 && markup[0] == '<' && markup[1] != '!' && markup[1] != '?';
}

} // namespace

std::vector<KnownElement> RecordDocument::getElements() const {
    std::vector<KnownElement> elements;
    for (const Slot& slot : slots) {
        const bool isCarried = slot.content == Content::Markup;
        const std::string_view markup = isCarried ? markupOf(slot) : lastMarkupOf(slot);
        if (isElement(markup)) {
            elements.push_back({keyOf(markup), isCarried ? noSlot : slot.id});
        }
    }
    return elements;
}

RecordDocument::Merge RecordDocument::compare(const xml::Outline& outline, std::vector<KnownElement> known) const {
    std::map<std::uint64_t, Content> contents;
    for (const Slot& slot : slots) {
        contents.emplace(slot.id, slot.content);
    }
    for (KnownElement& element : known) {
        const auto slot = contents.find(element.slot);
        if (slot != contents.end() && slot->second == Content::Markup) {
            element.slot = noSlot;
        }
    }
    const ElementMatch match = ElementMatch::between(known, keysOf(outline));

    Merge merge{outline.getSurroundings(), {}, match.isComplete};
    std::uint64_t behind = noSlot;
    const auto append = [&](std::string_view markup) {
        if (!markup.empty()) {
            merge.pieces.push_back({behind, std::make_unique<const std::string>(markup)});
        }
    };
    for (std::size_t number = 0; number < outline.size(); ++number) {
        const auto& [place, isInPlace] = match.found[number];
        const std::uint64_t record = place == ElementMatch::none ? noSlot : known[place].slot;
        append(outline[number].ahead);
        if (record == noSlot) {
            append(outline[number].element);
        } else if (isInPlace && contents.contains(record)) {
            behind = record;
        }
    }
    append(outline.size() == 0 ? outline.getContent() : outline[outline.size() - 1].behind);
    return merge;
}

void RecordDocument::apply(Merge merge) {
    std::vector<Slot> merged;
    merged.reserve(slots.size() + merge.pieces.size());
    // From here on nothing can fail, so that no record loses its slot.
    auto piece = merge.pieces.begin();
    const auto appendBehind = [&](std::uint64_t id) {
        for (; piece != merge.pieces.end() && piece->slot == id; ++piece) {
            merged.push_back(makeSlot(Content::Markup));
            merged.back().markup = std::move(piece->markup);
        }
    };
    appendBehind(noSlot);
    for (Slot& slot : slots) {
        if (slot.content != Content::Markup) {
            const std::uint64_t id = slot.id;
            merged.push_back(std::move(slot));
            appendBehind(id);
        }
    }
    slots = std::move(merged);
    surroundings = std::move(merge.surroundings);
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

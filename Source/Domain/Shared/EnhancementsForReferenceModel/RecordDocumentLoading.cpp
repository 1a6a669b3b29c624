#include "Domain/Shared/EnhancementsForReferenceModel/RecordDocument.h"

#include <algorithm>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

void RecordDocument::startLoad(std::shared_ptr<const xml::Outline> outline) {
    loading = std::move(outline);
    if (slots.empty()) {
        surroundings = loading->getSurroundings();
    }
    nextElement = 0;
    for (std::size_t number = 0; number < loading->size(); ++number) {
        appendMarkup((*loading)[number].ahead);
        slots.push_back(makeSlot(Content::Loading));
        slots.back().element = number;
    }
    appendMarkup(loading->size() == 0 ? loading->getContent() : (*loading)[loading->size() - 1].behind);
}

std::optional<xml::Outline::Part> RecordDocument::startTurn() {
    if (nextElement == loading->size()) {
        return std::nullopt;
    }
    const std::size_t number = nextElement++;
    const auto slot =
        std::find_if(slots.begin(), slots.end(), [number](const Slot& one) { return one.element == number; });
    slotInTurn = slot == slots.end() ? noSlot : slot->id;
    return (*loading)[number];
}

void RecordDocument::offer(const EnhancementBase& record, std::unique_ptr<CarriedFields> fields) {
    candidate = &record;
    candidateFields = std::move(fields);
}

void RecordDocument::endTurn() {
    const std::size_t slot = find(slotInTurn);
    if (slot != none && slots[slot].content == Content::Loading) {
        keepMarkup(slots[slot]);
    }
    slotInTurn = noSlot;
    candidate = nullptr;
    candidateFields.reset();
    isTurnTaken = false;
}

/// The element that was loading stays markup.
void RecordDocument::keepMarkup(Slot& slot) const {
    slot.markup = std::make_unique<const std::string>(markupOf(slot));
    slot.content = Content::Markup;
}

void RecordDocument::endLoad() {
    endTurn();
    for (Slot& slot : slots) {
        if (slot.content == Content::Loading) {
            keepMarkup(slot);
        }
        slot.element = none;
    }
    loading.reset();
}

std::optional<std::string_view> RecordDocument::getLoaded() const {
    return loading ? std::optional<std::string_view>(loading->getSource()) : std::nullopt;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

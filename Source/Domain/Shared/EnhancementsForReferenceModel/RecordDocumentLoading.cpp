#include "Domain/Shared/EnhancementsForReferenceModel/RecordDocument.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

void RecordDocument::startLoad(std::shared_ptr<const xml::Outline> outline) {
    keepAllMarkup();
    std::vector<Slot> appended;
    for (std::size_t number = 0; number < outline->size(); ++number) {
        appendMarkup(appended, (*outline)[number].ahead);
        appended.push_back(makeSlot(Content::Loading));
        appended.back().element = number;
    }
    appendMarkup(appended, outline->size() == 0 ? outline->getContent() : (*outline)[outline->size() - 1].behind);
    xml::Surroundings around = slots.empty() ? outline->getSurroundings() : surroundings;
    slots.reserve(slots.size() + appended.size());
    // From here on nothing can fail: without some of the elements, the next rewrite would lose them.
    std::move(appended.begin(), appended.end(), std::back_inserter(slots));
    surroundings = std::move(around);
    loading = std::move(outline);
    nextElement = 0;
}

std::optional<xml::Outline::Part> RecordDocument::startTurn() {
    if (nextElement == loading->size()) {
        return std::nullopt;
    }
    const std::size_t number = nextElement++;
    const std::size_t slot = findWhere([number](const Slot& one) { return one.element == number; });
    slotInTurn = slot == none ? noSlot : slots[slot].id;
    return (*loading)[number];
}

void RecordDocument::offer(const EnhancementBase& record, std::unique_ptr<CarriedFields> fields) {
    candidate = &record;
    candidateFields = std::move(fields);
}

void RecordDocument::endTurn() {
    const std::size_t slot = find(std::exchange(slotInTurn, noSlot));
    candidate = nullptr;
    candidateFields.reset();
    isTurnTaken = false;
    if (slot != none && slots[slot].content == Content::Loading) {
        keepMarkup(slots[slot]);
    }
}

/// The element that was loading stays markup.
void RecordDocument::keepMarkup(Slot& slot) const {
    slot.markup = std::make_unique<const std::string>(markupOf(slot));
    slot.content = Content::Markup;
}

void RecordDocument::endLoad() noexcept {
    try {
        endTurn();
        keepAllMarkup();
    } catch (const std::bad_alloc&) {} // the elements that are left are good until the next load
}

void RecordDocument::keepAllMarkup() {
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

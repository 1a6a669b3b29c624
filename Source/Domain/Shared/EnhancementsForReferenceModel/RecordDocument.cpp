#include "Domain/Shared/EnhancementsForReferenceModel/RecordDocument.h"

#include "Utilities/ScopeGuard.h"
#include "Xml/Node.h"

#include <algorithm>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

/// The attribute as it is written: with a text if the value is an int, a bool or a text. What has to be spelled for
/// that lasts as long as the last argument.
CarriedFields::Written writtenAs(const std::string& name, const object::PropertyValue& value, std::string& spelled) {
    if (const auto* const text = value.getIf<std::string>()) {
        return {name, *text, true};
    }
    if (const auto* const number = value.getIf<int>()) {
        spelled = xml::const_Node::to_string(static_cast<long long>(*number));
    } else if (const auto* const truth = value.getIf<bool>()) {
        spelled = xml::const_Node::to_string(*truth);
    } else {
        return {name, {}, false};
    }
    return {name, spelled, true};
}

/// Whether the record returns all that was read under the names that it returns.
bool settle(CarriedFields& fields, const Guid& owner,
            const std::vector<std::pair<std::string, object::PropertyValue>>& attributes) {
    const auto ownerId = owner.toGlobalId();
    std::vector<CarriedFields::Written> written = {{"OwnerId", {ownerId.data(), ownerId.size()}, true}};
    std::vector<std::string> spelled(attributes.size());
    for (std::size_t number = 0; number < attributes.size(); ++number) {
        const auto& [name, value] = attributes[number];
        written.push_back(writtenAs(name, value, spelled[number]));
    }
    return fields.settle(written);
}

} // namespace

void RecordDocument::add(const EnhancementBase& record) {
    const std::size_t inTurn = &record == candidate ? find(slotInTurn) : none;
    if (inTurn != none) {
        slots[inTurn].content = Content::Record;
        slots[inTurn].record = &record;
        slots[inTurn].fields = std::move(candidateFields);
        isTurnTaken = true;
        return;
    }
    isTurnTaken = false;
    Slot slot = makeSlot(Content::Record);
    slot.record = &record;
    const auto behind =
        std::find_if(slots.begin(), slots.end(), [](const Slot& one) { return one.content == Content::Loading; });
    slots.insert(behind, std::move(slot));
}

void RecordDocument::remove(std::span<const EnhancementBase* const> records) {
    for (Slot& slot : slots) {
        if (slot.content == Content::Gone) {
            slot.record = nullptr;
        } else if (slot.content == Content::Record && std::binary_search(records.begin(), records.end(), slot.record)) {
            slot.content = Content::Gone;
        }
    }
}

void RecordDocument::putBack() {
    for (Slot& slot : slots) {
        if (slot.content == Content::Gone && slot.record != nullptr) {
            slot.content = Content::Record;
        }
    }
}

void RecordDocument::clear() {
    for (Slot& slot : slots) {
        if (slot.content == Content::Record) {
            slot.content = Content::Gone;
            slot.record = nullptr;
        }
    }
}

bool RecordDocument::render() {
    if (isRendering) {
        return false;
    }
    isRendering = true;
    const ScopeGuard end([this] { isRendering = false; });
    text.startDraft(loading ? loading->getSource().size() : 0);
    try {
        xml::MarkupWriter writer(xml::LineEnding::Lf);
        writer.appendDeclaration();
        writer.appendOutside(surroundings.before);
        writer.startElement(rootName, surroundings.rootAttributes);
        appendSlots(writer);
        text.endDraft();
    } catch (...) {
        discard();
        throw;
    }
    return true;
}

/// The writer holds the document up to the content of the root. Each piece of that is written behind it and taken back.
void RecordDocument::appendSlots(xml::MarkupWriter& writer) {
    const std::size_t head = writer.getSize();
    bool isEmpty = true;
    for (std::size_t number = 0; number < slots.size(); ++number) {
        if (slots[number].content == Content::Gone) {
            continue;
        }
        if (std::exchange(isEmpty, false)) {
            text.append(writer.getText());
            writer.setFilled();
        }
        if (slots[number].content == Content::Record) {
            const auto drafted = appendRecord(number, writer, head);
            slots[number].drafted = drafted; // a kind may have added a record
        } else if (const auto& [begin, end] = slots[number].accepted; begin != end) {
            slots[number].drafted = text.repeat(slots[number].accepted); // markup stays as it is
        } else {
            writer.appendMarkup(markupOf(slots[number]));
            slots[number].drafted = text.append(writer.getText().substr(head));
            writer.cut(head);
        }
    }
    writer.endElement();
    writer.appendOutside(surroundings.after);
    text.append(writer.getText().substr(isEmpty ? 0 : head));
}

/// Only a record that isn't what was accepted last is written anew.
DocumentText::Range RecordDocument::appendRecord(std::size_t number, xml::MarkupWriter& writer, std::size_t head) {
    const EnhancementBase& record = *slots[number].record;
    const std::string kind = record.getEntityName();
    const auto attributes = record.getAttributes();
    Slot& slot = slots[number]; // only now: these may add a record
    if (slot.renderedFrom.equals(kind, record.ownerId, attributes)) {
        return text.repeat(slot.accepted);
    }
    writeRecord(slot, writer, kind, attributes);
    draftedFrom.emplace_back(number, RenderedFrom(kind, record.ownerId, attributes));
    const auto drafted = text.append(writer.getText().substr(head));
    writer.cut(head);
    return drafted;
}

void RecordDocument::writeRecord(Slot& slot, xml::MarkupWriter& writer, const std::string& kind,
                                 const RenderedFrom::Attributes& attributes) {
    const EnhancementBase& record = *slot.record;
    if (slot.fields) {
        isAltered = !settle(*slot.fields, record.ownerId, attributes) || isAltered;
        if (slot.fields->isEmpty()) {
            slot.fields.reset();
        }
    }
    writer.startElement(kind, slot.fields ? slot.fields->getAttributes() : std::string_view());
    const auto ownerId = record.ownerId.toGlobalId();
    writer.appendElement("OwnerId", {ownerId.data(), ownerId.size()});
    if (slot.fields) {
        for (const CarriedFields::Field& field : slot.fields->getFields()) {
            writer.appendMarkup(field.markup);
        }
    }
    std::string spelled;
    for (const auto& [name, value] : attributes) {
        const auto written = writtenAs(name, value, spelled);
        if (written.hasText) {
            writer.appendElement(name, written.text);
        } else {
            writer.startElement(name);
            writer.endElement();
        }
    }
    writer.endElement();
}

void RecordDocument::accept() {
    text.accept();
    for (auto& [number, renderedFrom] : draftedFrom) {
        slots[number].renderedFrom = std::move(renderedFrom);
    }
    draftedFrom.clear();
    std::erase_if(slots, [](const Slot& slot) { return slot.content == Content::Gone; });
    for (Slot& slot : slots) {
        slot.accepted = slot.drafted;
    }
}

std::size_t RecordDocument::find(std::uint64_t id) {
    return findWhere([id](const Slot& one) { return one.id == id; });
}

void RecordDocument::appendMarkup(std::vector<Slot>& target, std::string_view markup) {
    if (!markup.empty()) {
        Slot slot = makeSlot(Content::Markup);
        slot.markup = std::make_unique<const std::string>(markup);
        target.push_back(std::move(slot));
    }
}

std::string_view RecordDocument::markupOf(const Slot& slot) const {
    return slot.content == Content::Loading ? (*loading)[slot.element].element : std::string_view(*slot.markup);
}

void RecordDocument::discard() {
    text.discard();
    draftedFrom.clear();
}

/// The element as it stands in what was accepted last or, if it wasn't in that, in what is being loaded.
std::string_view RecordDocument::lastMarkupOf(const Slot& slot) const {
    const auto& [begin, end] = slot.accepted;
    if (begin != end) {
        const std::string_view lines = text.getAccepted().substr(begin, end - begin);
        return lines.substr(lines.find('<'));
    }
    return slot.element == none ? std::string_view() : (*loading)[slot.element].element;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

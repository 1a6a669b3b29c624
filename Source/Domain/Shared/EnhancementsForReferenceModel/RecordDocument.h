#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/CarriedFields.h"
#include "Domain/Shared/EnhancementsForReferenceModel/DocumentText.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "Domain/Shared/EnhancementsForReferenceModel/KnownFiles.h"
#include "Domain/Shared/EnhancementsForReferenceModel/RenderedFrom.h"
#include "Xml/MarkupWriter.h"
#include "Xml/Outline.h"
#include "Xml/Surroundings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// The document that the records are stored in, as an ordered list of slots: each holds a record or markup that no
/// record was made of (an element of a kind that isn't registered, a comment, an element that the load hasn't come to),
/// which every rewrite repeats as it stood and where it stood. The records, which it doesn't own, are in the order of
/// the database.
///
/// A load goes: startLoad; for each element startTurn, offer if a record came of it, and endTurn; endLoad.
class RecordDocument {
public:
    static constexpr const char* rootName = "Enhancements";

    /// Appends what the outline holds, each element as markup so far: all of it or, if memory runs out, nothing.
    void startLoad(std::shared_ptr<const xml::Outline> outline);

    /// The next element of the load, which is in turn now; nothing behind the last one. Valid until endLoad.
    std::optional<xml::Outline::Part> startTurn();

    /// That record came of the element in turn; once it is added, it stands for the element.
    void offer(const EnhancementBase& record, std::unique_ptr<CarriedFields> fields);

    /// An element that no record stands for stays markup.
    void endTurn();

    /// Ends the load, also if it hasn't come to all elements.
    void endLoad() noexcept;

    /// The document as the running load read it; nothing at other times.
    std::optional<std::string_view> getLoaded() const;

    /// Takes a new record: in the place of the element in turn if it came of that, otherwise behind the other records.
    void add(const EnhancementBase& record);

    /// Whether the element in turn has its record, so that the next document holds nothing that the file doesn't hold.
    bool addsNothing() const { return isTurnTaken; }

    /// Leaves the records, sorted by address, out of the next draft. putBack takes the last removal back, until a draft
    /// is accepted.
    void remove(std::span<const EnhancementBase* const> records);
    void putBack();

    /// Forgets all records.
    void clear();

    /// Makes a draft of the whole document. Calls getEntityName and getAttributes of each record once; what they throw
    /// comes through, without a draft then. A draft is accepted or discarded before the next one. Returns false,
    /// without a draft, if it is called by one of these.
    bool render();

    /// Whether a record returns a text of the document that is being loaded as another one.
    bool altersTexts() const { return isAltered; }

    /// To be called once a copy holds the texts that were altered.
    void forgetAlteration() { isAltered = false; }

    /// The draft is what the file holds from now on.
    void accept();
    void discard();

    /// What was accepted last, and the draft.
    const DocumentText& getDocumentText() const { return text; }

    /// The elements in what was accepted or loaded last. One that is still to be loaded counts as a record. There must
    /// be no draft.
    std::vector<KnownElement> getElements() const;

    /// What another program has made of a file in which these elements stood.
    struct Merge {
        struct Piece {
            std::uint64_t slot; // that it stands behind; noSlot if none of this process's own is ahead of it
            std::unique_ptr<const std::string> markup;
        };
        xml::Surroundings surroundings;
        std::vector<Piece> pieces;
        bool isComplete; // no record of this process is gone or changed there
    };
    Merge compare(const xml::Outline& outline, std::vector<KnownElement> known) const;

    /// Replaces all markup by that of the file; if memory runs out, nothing has changed. The records stay as they are
    /// in memory.
    void apply(Merge merge);

private:
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
    static constexpr std::uint64_t noSlot = KnownElement::noSlot;

    enum class Content { Markup, Loading, Record, Gone };

    /// Small, since there is one for each record.
    struct Slot {
        std::uint64_t id;
        Content content;
        const EnhancementBase* record = nullptr;
        std::unique_ptr<CarriedFields> fields;     // of the record, if there are any
        std::unique_ptr<const std::string> markup; // of what is neither a record nor loading
        std::size_t element = none;                // in the outline of the load that isn't over
        RenderedFrom renderedFrom;                 // what was accepted last, of a record
        DocumentText::Range accepted;              // where it stands in what was accepted last
        DocumentText::Range drafted;
    };

    std::size_t find(std::uint64_t id);

    /// The number of the one slot that meets the condition; none if there is none. Looks first where it found one last.
    template <typename Condition>
    std::size_t findWhere(const Condition& isMet) {
        const auto middle = slots.begin() + static_cast<std::ptrdiff_t>(std::min(lastFound, slots.size()));
        auto slot = std::find_if(middle, slots.end(), isMet);
        if (slot == slots.end()) {
            slot = std::find_if(slots.begin(), middle, isMet);
            if (slot == middle) {
                return none;
            }
        }
        lastFound = static_cast<std::size_t>(slot - slots.begin());
        return lastFound;
    }

    Slot makeSlot(Content content) { return {nextId++, content, nullptr, nullptr, nullptr, none, {}, {}, {}}; }
    void appendMarkup(std::vector<Slot>& target, std::string_view markup);
    void keepMarkup(Slot& slot) const;
    void keepAllMarkup();
    void appendSlots(xml::MarkupWriter& writer);
    DocumentText::Range appendRecord(std::size_t number, xml::MarkupWriter& writer, std::size_t head);
    void writeRecord(Slot& slot, xml::MarkupWriter& writer, const std::string& kind,
                     const RenderedFrom::Attributes& attributes);
    std::string_view markupOf(const Slot& slot) const;
    std::string_view lastMarkupOf(const Slot& slot) const;

    std::vector<Slot> slots;
    std::uint64_t nextId = noSlot + 1;
    xml::Surroundings surroundings;
    std::shared_ptr<const xml::Outline> loading;
    std::size_t nextElement = 0;                // whose turn is next
    std::uint64_t slotInTurn = noSlot;          // of the element in turn, if there is one
    std::size_t lastFound = 0;                  // by findWhere
    const EnhancementBase* candidate = nullptr; // that came of the element in turn
    std::unique_ptr<CarriedFields> candidateFields;
    bool isTurnTaken = false;
    bool isAltered = false;
    bool isRendering = false;
    DocumentText text;
    std::vector<std::pair<std::size_t, RenderedFrom>> draftedFrom; // by the numbers of slots that differ in the draft
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

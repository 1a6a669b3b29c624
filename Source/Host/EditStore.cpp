#include "Host/EditStore.h"

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Host/EditLine.h"
#include "Host/NumberTable.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_map>
#include <utility>

namespace orv::host {

using domain::shared::enhancementsforreferencemodel::Enhancements;

namespace {

/// The records of the object.
std::vector<PropertyEdits*> recordsOf(const Guid& id) {
    std::vector<PropertyEdits*> records;
    for (const auto& record : Enhancements::getOrCreateEnhancementsDb()->getRecords()) {
        if (record->ownerId == id) {
            if (auto* const edits = dynamic_cast<PropertyEdits*>(record.get())) {
                records.push_back(edits);
            }
        }
    }
    return records;
}

/// The edit of the line, if it is one of the property. A line that isn't understood is of none.
std::optional<PropertyEdit> editOfProperty(const std::string& line, const std::string& set,
                                           const std::string& property) {
    auto edit = editOf(line);
    return edit && edit->set == set && edit->property == property ? std::move(edit) : std::nullopt;
}

/// Edits on their way into the records of their objects.
class EditsUnderWay {
public:
    EditsUnderWay() {
        for (const auto& record : Enhancements::getOrCreateEnhancementsDb()->getRecords()) {
            if (auto* const edits = dynamic_cast<PropertyEdits*>(record.get())) {
                recordsOfObjects[edits->ownerId].push_back(edits);
            }
        }
    }

    void put(const Guid& id, PropertyEdit edit) {
        const auto presentEdit = [&edit](const std::string& line) {
            return editOfProperty(line, edit.set, edit.property);
        };
        std::vector<PropertyEdits*>& records = recordsOfObjects[id];
        if (records.empty()) {
            records.push_back(added.emplace_back(std::make_unique<PropertyEdits>()).get());
            records.front()->ownerId = id;
        }
        PropertyEdits* target = records.front();
        for (PropertyEdits* const record : records) {
            for (const std::string& line : record->lines) {
                const auto present = presentEdit(line);
                if (present && present->time >= edit.time) {
                    edit.time = present->time + std::chrono::milliseconds(1);
                }
                target = present ? record : target;
            }
        }
        std::vector<std::string>& lines = target->lines;
        before.try_emplace(target, lines);
        const auto place = std::find_if(lines.begin(), lines.end(), presentEdit);
        if (place == lines.end()) {
            lines.push_back(lineOf(edit));
        } else {
            *place = lineOf(edit);
            lines.erase(std::remove_if(place + 1, lines.end(), presentEdit), lines.end());
        }
    }

    /// Writes the file. If that can't be done, the records are as before.
    bool store() {
        std::vector<std::unique_ptr<EnhancementBase>> records(std::make_move_iterator(added.begin()),
                                                              std::make_move_iterator(added.end()));
        if (records.empty() ? Enhancements::saveChanges() : Enhancements::addEnhancements(records)) {
            return true;
        }
        for (auto& [record, lines] : before) {
            record->lines = std::move(lines);
        }
        return false;
    }

private:
    std::unordered_map<Guid, std::vector<PropertyEdits*>> recordsOfObjects;
    std::vector<std::unique_ptr<PropertyEdits>> added;
    std::unordered_map<PropertyEdits*, std::vector<std::string>> before;
};

} // namespace

StoredEdits::StoredEdits(const std::vector<std::unique_ptr<EnhancementBase>>& records) {
    NumberTable firstOfObjects;
    std::vector<std::size_t> lastOfObjects; // by the number of the object's first one
    for (const auto& record : records) {
        const auto* const edits = dynamic_cast<const PropertyEdits*>(record.get());
        if (edits == nullptr) {
            continue;
        }
        const std::size_t number = entries.size();
        const std::uint32_t first = firstOfObjects.findOrAdd(
            edits->ownerId.hash(), static_cast<std::uint32_t>(number),
            [&](std::uint32_t known) { return entries[known].record->ownerId == edits->ownerId; });
        entries.push_back({edits, 0, first == number});
        lastOfObjects.push_back(number);
        if (first != number) {
            entries[std::exchange(lastOfObjects[first], number)].next = number;
        }
    }
}

bool isEditStored(const Guid& id, const std::string& set, const std::string& property) {
    const auto records = recordsOf(id);
    return std::any_of(records.begin(), records.end(), [&](const PropertyEdits* record) {
        return std::any_of(record->lines.begin(), record->lines.end(),
                           [&](const std::string& line) { return editOfProperty(line, set, property).has_value(); });
    });
}

bool storeEdits(const std::vector<ObjectEdit>& edits) {
    EditsUnderWay underWay;
    for (const auto& [id, edit] : edits) {
        underWay.put(id, edit);
    }
    return underWay.store();
}

} // namespace orv::host

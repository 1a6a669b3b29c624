#include "Annotate/Status.h"

#include "Annotate/EditText.h"
#include "Annotate/Filter.h"

#include <algorithm>

namespace annotate {

Status::Status(const Additions& additionsToModel) : additions(&additionsToModel) {
    for (const AddedNote& added : additions->getNotes()) {
        take(added);
    }
    for (const AddedEdit& added : additions->getEdits()) {
        take(added);
    }
}

Counts Status::totals() const {
    return {{"Objects", additions->getDetails().getModel().getObjects().size()},
            {"Open notes", openNotes},
            {"Resolved notes", resolvedNotes},
            {"Edits", additions->getEdits().size()},
            {"Authors", authors.size()},
            {"Vanished objects", vanished.size()},
            {"Edits that the model has caught up with", caughtUp.size()}};
}

Counts Status::openByStorey() const {
    Counts counts;
    for (const ModelObject& object : additions->getDetails().getModel().getObjects()) {
        if (const auto found = storeys.find(&object); found != storeys.end()) {
            counts.emplace_back(storeyName(&object), found->second);
        }
    }
    if (const auto found = storeys.find(nullptr); found != storeys.end()) {
        counts.emplace_back(storeyName(nullptr), found->second);
    }
    if (openOnVanished > 0) {
        counts.emplace_back(classOf(nullptr), openOnVanished);
    }
    return counts;
}

Counts Status::openByClass() const {
    Counts counts(classes.begin(), classes.end());
    std::stable_sort(counts.begin(), counts.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    return counts;
}

std::vector<Row> Status::vanishedRows() const {
    std::vector<Row> rows;
    for (const auto& [globalId, on] : vanished) {
        rows.push_back({globalId, std::to_string(on.notes), std::to_string(on.edits)});
    }
    return rows;
}

void Status::take(const AddedNote& added) {
    const Note& note = *added.note;
    takeAuthor(note.author);
    ++(note.resolved ? resolvedNotes : openNotes);
    if (added.object == nullptr) {
        ++vanished[note.ownerId.toString(false)].notes;
    }
    if (!note.resolved) {
        ++classes[classOf(added.object)];
        ++(added.object == nullptr ? openOnVanished : storeys[added.storey]);
    }
}

void Status::take(const AddedEdit& added) {
    const orv::host::PropertyEdit& edit = added.entry->edit;
    const std::string globalId = added.entry->id.toString(false);
    takeAuthor(edit.author);
    if (added.object == nullptr) {
        ++vanished[globalId].edits;
    }
    if (comparisonOf(added.property, additions->getDetails().getUnits()) == Comparison::Same) {
        caughtUp.push_back({globalId, edit.set, edit.property, editText(edit), edit.author});
    }
}

void Status::takeAuthor(const std::string& author) {
    if (!author.empty()) {
        authors.insert(author);
    }
}

std::string storeyName(const ModelObject* storey) {
    if (storey == nullptr) {
        return "(in no storey)";
    }
    return storey->name.empty() ? storey->globalId : storey->name;
}

} // namespace annotate

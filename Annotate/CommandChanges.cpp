#include "Annotate/CommandChanges.h"

#include "Annotate/Notes.h"

#include <utility>

namespace annotate {

using orv::domain::shared::enhancementsforreferencemodel::EnhancementBase;

CommandChanges::CommandChanges(Store& changedStore, const std::string& author, const std::string& command)
    : store(&changedStore) {
    changes.author = author;
    changes.command = command;
}

void CommandChanges::add(const Note& note) {
    add(subjectOf(note), std::string(noSubject), textOf(note));
}

void CommandChanges::remove(const Note& note) {
    add(subjectOf(note), textOf(note), std::string(noSubject));
}

void CommandChanges::replace(const std::string& line, const orv::host::ObjectEdit& edit) {
    add(subjectOfEdit(edit.id), line.empty() ? std::string(noSubject) : line, orv::host::lineOf(edit.edit));
}

void CommandChanges::remove(const std::string& line, const orv::Guid& id) {
    add(subjectOfEdit(id), line, std::string(noSubject));
}

void CommandChanges::write(const std::vector<const EnhancementBase*>& removed) {
    constexpr std::size_t longSize = 64;
    if (changes.subjects.empty()) {
        store->write(removed);
    } else if (removed.empty() && changes.subjects.size() > longSize) {
        writeBehindAll();
    } else if (removed.empty() && lastCommandsOf(changes.author).empty()) {
        store->make<LastCommand>() = std::move(changes);
        store->write();
    } else {
        recordToReplace() = std::move(changes);
        store->write(removed);
    }
}

/// A load asks each record once for each that stands behind it, so that a long one is to stand behind all.
void CommandChanges::writeBehindAll() {
    const std::vector<LastCommand*> former = lastCommandsOf(changes.author);
    store->make<LastCommand>() = std::move(changes);
    for (LastCommand* const command : former) {
        *command = LastCommand();
    }
    store->write();
    Store::tidy(emptyLastCommands());
}

/// The author's record. Where there is none yet, one is written that tells of nothing, as no write both adds a record
/// and removes others.
LastCommand& CommandChanges::recordToReplace() {
    const std::vector<LastCommand*> former = lastCommandsOf(changes.author);
    if (!former.empty()) {
        return *former.back();
    }
    auto& made = store->make<LastCommand>();
    store->write();
    return made;
}

std::string CommandChanges::subjectOf(const Note& note) {
    return subjectOfNote(note.number.value_or(0));
}

std::string CommandChanges::textOf(const Note& note) {
    return textOfNote(note);
}

void CommandChanges::add(std::string subject, std::string before, std::string after) {
    changes.subjects.push_back(std::move(subject));
    changes.before.push_back(std::move(before));
    changes.after.push_back(std::move(after));
}

} // namespace annotate

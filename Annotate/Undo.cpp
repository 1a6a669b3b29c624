#include "Annotate/Undo.h"

#include "Annotate/EditIndex.h"
#include "Annotate/Notes.h"
#include "Host/FieldText.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

namespace annotate {

using orv::domain::shared::enhancementsforreferencemodel::EnhancementBase;

namespace {

constexpr std::string_view none = "none";
constexpr std::string_view noteSubject = "note ";
constexpr std::string_view editSubject = "edit ";

/// Those that tell of a change.
std::vector<LastCommand*> commandsOf(const std::string& author) {
    std::vector<LastCommand*> commands = allOf<LastCommand>(Store::getRecords());
    std::erase_if(commands, [&author](const LastCommand* command) {
        return command->author != author || command->subjects.empty();
    });
    return commands;
}

/// Those that tell of none, as a command leaves one of its own before it removes what it replaces.
std::vector<const EnhancementBase*> emptyCommands() {
    std::vector<const EnhancementBase*> empty;
    for (const LastCommand* const command : allOf<const LastCommand>(Store::getRecords())) {
        if (command->subjects.empty()) {
            empty.push_back(command);
        }
    }
    return empty;
}

/// As in "Pset_WallCommon.FireRating of 1jXyBr6EAquR0PHYXIrQ4_".
std::string nameOfEdit(const orv::host::PropertyEdit& edit, const orv::Guid& owner) {
    return edit.set + '.' + edit.property + " of " + owner.toString(false);
}

RequestError notUnderstood() {
    return RequestError("What the store tells of a last command isn't understood. It can't be taken back.");
}

/// A note or an edit that a command changed, as it stands now.
class Subject {
public:
    Subject(const Notebook& notebook, EditIndex& editIndex, const std::string& subject, const std::string& before,
            const std::string& after)
        : edits(editIndex) {
        if (subject.starts_with(noteSubject)) {
            std::int64_t number = 0;
            if (!orv::host::take(std::string_view(subject).substr(noteSubject.size()), number)) {
                throw notUnderstood();
            }
            note = notebook.tryFind(number);
            shown = subject;
            present = note == nullptr ? none : textOfNote(*note);
            return;
        }
        const auto edit = orv::host::editOf(before == none ? after : before);
        if (!edit || !subject.starts_with(editSubject) || !owner.boSet(subject.substr(editSubject.size()))) {
            throw notUnderstood();
        }
        set = edit->set;
        property = edit->property;
        shown = nameOfEdit(*edit, owner);
        const EditIndex::Entry* const entry = edits.find(owner, set, property);
        present = entry == nullptr || entry->line.empty() ? none : entry->line;
        isEdit = true;
    }

    const std::string& getPresent() const { return present; }

    /// As in "note 3".
    const std::string& getName() const { return shown; }

    /// Who changed it last, as it tells by itself; empty if it is gone.
    std::string getAuthor() const {
        if (isEdit) {
            const auto edit = orv::host::editOf(present);
            return edit ? edit->author : "";
        }
        return note == nullptr ? "" : note->changedBy.empty() ? note->author : note->changedBy;
    }

    /// Makes it what the text tells with the store's next write. A note that is to go is in the list of those then.
    void become(Store& store, const std::string& text, std::vector<const EnhancementBase*>& removed) {
        if (present == text) {
            return;
        }
        if (isEdit) {
            edits.put(store, owner, present == none ? std::string() : present, text == none ? std::string() : text);
        } else if (text == none) {
            removed.push_back(note);
        } else {
            setNote(note == nullptr ? store.make<Note>() : *note, text);
        }
    }

private:
    EditIndex& edits;
    std::string shown;
    std::string present;
    Note* note = nullptr;
    orv::Guid owner;
    std::string set;
    std::string property;
    bool isEdit = false;
};

std::vector<Subject> subjectsOf(const LastCommand& last, const Notebook& notebook, EditIndex& edits) {
    std::vector<Subject> subjects;
    const std::size_t count = std::min({last.subjects.size(), last.before.size(), last.after.size()});
    for (std::size_t number = 0; number < count; ++number) {
        subjects.emplace_back(notebook, edits, last.subjects[number], last.before[number], last.after[number]);
    }
    return subjects;
}

/// Who made what the last commands of all tell.
class Changers {
public:
    Changers() {
        for (const LastCommand* const command : allOf<const LastCommand>(Store::getRecords())) {
            const std::size_t count =
                std::min({command->subjects.size(), command->before.size(), command->after.size()});
            for (std::size_t number = 0; number < count; ++number) {
                const std::string name =
                    nameIn(command->subjects[number], command->before[number], command->after[number]);
                authors.insert_or_assign(name + '\n' + command->after[number], command->author);
            }
        }
    }

    /// Who left the subject as it is now; empty if nobody knows.
    std::string find(const Subject& changed) const {
        const std::string author = changed.getAuthor();
        const auto found =
            author.empty() ? authors.find(changed.getName() + '\n' + changed.getPresent()) : authors.end();
        return found == authors.end() ? author : found->second;
    }

private:
    /// As Subject names it; the subject itself if that isn't understood.
    static std::string nameIn(const std::string& subject, const std::string& before, const std::string& after) {
        const auto edit =
            subject.starts_with(editSubject) ? orv::host::editOf(before == none ? after : before) : std::nullopt;
        orv::Guid owner;
        return edit && owner.boSet(subject.substr(editSubject.size())) ? nameOfEdit(*edit, owner) : subject;
    }

    std::unordered_map<std::string, std::string> authors;
};

/// Throws if a subject isn't as the command left it. It may be as it is to become, if the command was interrupted or
/// the author did that otherwise, but not if somebody else did.
void requireUnchanged(const LastCommand& last, const std::vector<Subject>& subjects) {
    constexpr std::size_t mostNamed = 10;
    std::optional<Changers> changers; // only where something was changed
    std::string changed;
    std::size_t count = 0;
    for (std::size_t number = 0; number < subjects.size(); ++number) {
        const Subject& subject = subjects[number];
        if (subject.getPresent() == last.after[number]) {
            continue;
        }
        if (!changers) {
            changers.emplace();
        }
        const std::string author = changers->find(subject);
        const bool isAsBefore = subject.getPresent() == last.before[number];
        if (isAsBefore && (author.empty() || author == last.author)) {
            continue;
        }
        if (++count <= mostNamed) {
            changed.append(changed.empty() ? "" : ", ").append(subject.getName());
            changed.append(author.empty() ? "" : " (by " + author + ')');
        }
    }
    if (count > mostNamed) {
        changed += " and " + std::to_string(count - mostNamed) + " more";
    }
    if (count > 0) {
        throw RequestError("\"" + last.command + "\" stays: changed since then: " + changed + '.');
    }
}

} // namespace

ChangeLog::ChangeLog(Store& changedStore, const std::string& author, const std::string& command)
    : store(&changedStore) {
    changes.author = author;
    changes.command = command;
}

void ChangeLog::replace(const std::string& line, const orv::host::ObjectEdit& edit) {
    log(std::string(editSubject) + edit.id.toString(false), line.empty() ? std::string(none) : line,
        orv::host::lineOf(edit.edit));
}

void ChangeLog::remove(const std::string& line, const orv::Guid& id) {
    log(std::string(editSubject) + id.toString(false), line, std::string(none));
}

std::string ChangeLog::subjectOf(const Note& note) {
    return std::string(noteSubject) + std::to_string(note.number.value_or(0));
}

std::string ChangeLog::textOf(const Note& note) {
    return textOfNote(note);
}

void ChangeLog::log(std::string subject, std::string before, std::string after) {
    changes.subjects.push_back(std::move(subject));
    changes.before.push_back(std::move(before));
    changes.after.push_back(std::move(after));
}

void ChangeLog::write(const std::vector<const EnhancementBase*>& removed) {
    const std::vector<LastCommand*> earlier = commandsOf(changes.author);
    constexpr std::size_t longSize = 64;
    if (changes.subjects.empty()) {
        store->write(removed);
    } else if (removed.empty() && changes.subjects.size() > longSize) {
        // A load asks a record once for each that stands behind it, so a long one stands behind all.
        store->make<LastCommand>() = std::move(changes);
        std::for_each(earlier.begin(), earlier.end(), [](LastCommand* former) { *former = LastCommand(); });
        store->write();
        Store::tidy(emptyCommands());
    } else if (removed.empty() || !earlier.empty()) {
        (earlier.empty() ? store->make<LastCommand>() : *earlier.back()) = std::move(changes);
        store->write(removed);
    } else {
        auto& made = store->make<LastCommand>();
        store->write(); // It tells nothing yet, so that what it tells is true whatever ends the program.
        made = std::move(changes);
        store->write(removed);
    }
}

std::string undoLastCommand(Store& store, const std::string& author) {
    const std::vector<LastCommand*> commands = commandsOf(author);
    if (commands.empty()) {
        throw RequestError("There is no command of " + (author.empty() ? "yours" : author) + " in " +
                           store.getPath().string() + " that could be taken back.");
    }
    LastCommand& last = *commands.back();
    const Notebook notebook(store);
    EditIndex edits(Store::getRecords());
    std::vector<Subject> subjects = subjectsOf(last, notebook, edits);
    requireUnchanged(last, subjects);
    std::vector<const EnhancementBase*> removed;
    for (std::size_t number = 0; number < subjects.size(); ++number) {
        subjects[number].become(store, last.before[number], removed);
    }
    std::swap(last.before, last.after);
    last.undone = !last.undone;
    std::string done = (last.undone ? "Taken back: " : "Done again: ") + last.command + '.';
    store.write(removed);
    return done;
}

} // namespace annotate

#include "Annotate/Undo.h"

#include "Annotate/EditIndex.h"
#include "Annotate/LastCommand.h"
#include "Annotate/Notes.h"
#include "Host/PropertyEdits.h"

#include <optional>
#include <unordered_map>
#include <utility>

namespace annotate {

using orv::domain::shared::enhancementsforreferencemodel::EnhancementBase;

namespace {

/// A note or an edit that a command changed, as it stands now.
class Subject {
public:
    Subject(const Notebook& notebook, EditIndex& editIndex, ChangedSubject changedSubject)
        : edits(editIndex), changed(std::move(changedSubject)) {
        if (changed.note) {
            note = notebook.tryFind(*changed.note);
            present = note == nullptr ? noSubject : textOfNote(*note);
        } else {
            const EditIndex::Entry* const entry = edits.find(changed.owner, changed.set, changed.property);
            present = entry == nullptr || entry->line.empty() ? noSubject : entry->line;
        }
    }

    const std::string& getPresent() const { return present; }
    const std::string& getName() const { return changed.name; }

    /// Who changed it last, as it tells by itself; empty if it is gone.
    std::string getAuthor() const {
        if (!changed.note) {
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
        if (!changed.note) {
            const auto lineIn = [](const std::string& line) { return line == noSubject ? std::string() : line; };
            edits.replaceLine(store, changed.owner, lineIn(present), lineIn(text));
        } else if (text == noSubject) {
            removed.push_back(note);
        } else {
            setNote(note == nullptr ? store.make<Note>() : *note, text);
        }
    }

private:
    EditIndex& edits;
    ChangedSubject changed;
    std::string present;
    Note* note = nullptr;
};

std::vector<Subject> subjectsOf(const LastCommand& last, const Notebook& notebook, EditIndex& edits) {
    std::vector<Subject> subjects;
    for (std::size_t place = 0; place < last.countChanges(); ++place) {
        auto changed = changedSubject(last, place);
        if (!changed) {
            throw RequestError("What the store tells of a last command isn't understood. It can't be taken back.");
        }
        subjects.emplace_back(notebook, edits, std::move(*changed));
    }
    return subjects;
}

/// Who made what the last commands of all tell.
class Changers {
public:
    Changers() {
        for (const LastCommand* const command : allOf<const LastCommand>(Store::getRecords())) {
            for (std::size_t place = 0; place < command->countChanges(); ++place) {
                if (const auto changed = changedSubject(*command, place)) {
                    authors.insert_or_assign(changed->name + '\n' + command->after[place], command->author);
                }
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

std::string undoLastCommand(Store& store, const std::string& author) {
    const std::vector<LastCommand*> commands = lastCommandsOf(author);
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

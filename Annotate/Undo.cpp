#include "Annotate/Undo.h"

#include "Annotate/EditIndex.h"
#include "Annotate/Notes.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace annotate {

namespace {

constexpr std::string_view none = "none";
constexpr std::string_view noteSubject = "note ";
constexpr std::string_view editSubject = "edit ";

LastCommand* findLast(const std::string& author) {
    const auto all = allOf<LastCommand>(Store::getRecords());
    const auto found =
        std::find_if(all.begin(), all.end(), [&author](const LastCommand* last) { return last->author == author; });
    return found == all.end() ? nullptr : *found;
}

/// A note or an edit that a command changed, as it stands now.
class Subject {
public:
    Subject(const Notebook& notebook, EditIndex& editIndex, const std::string& subject, const std::string& before,
            const std::string& after)
        : edits(editIndex) {
        if (subject.starts_with(noteSubject)) {
            std::int64_t number = 0;
            std::from_chars(subject.data() + noteSubject.size(), subject.data() + subject.size(), number);
            note = notebook.tryFind(number);
            shown = subject;
            present = note == nullptr ? none : textOfNote(*note);
            return;
        }
        const auto edit = orv::host::editOf(before == none ? after : before);
        owner.boSet(subject.substr(std::min(editSubject.size(), subject.size())));
        set = edit ? edit->set : "";
        property = edit ? edit->property : "";
        shown = set + '.' + property + " of " + owner.toString(false);
        const EditIndex::Entry* const entry = edits.find(owner, set, property);
        present = entry == nullptr || entry->line.empty() ? none : entry->line;
        isEdit = true;
    }

    const std::string& getPresent() const { return present; }

    /// What it is and who changed it last.
    std::string describe() const {
        std::string author;
        if (isEdit) {
            const auto edit = orv::host::editOf(present);
            author = edit ? edit->author : "";
        } else if (note != nullptr) {
            author = note->changedBy.empty() ? note->author : note->changedBy;
        }
        return shown + (author.empty() ? "" : " (by " + author + ")");
    }

    /// Makes it what the text tells.
    void become(Store& store, const std::string& text) {
        if (present == text) {
            return;
        }
        if (isEdit) {
            edits.put(store, owner, present == none ? std::string() : present, text == none ? std::string() : text);
        } else if (text == none) {
            removed = note;
        } else {
            setNote(note == nullptr ? store.make<Note>() : *note, text);
        }
    }

    /// The note that is to go.
    const Note* getRemoved() const { return removed; }

private:
    EditIndex& edits;
    std::string shown;
    std::string present;
    Note* note = nullptr;
    const Note* removed = nullptr;
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

/// Throws if a subject is neither as the command left it nor as it is to become.
void requireUnchanged(const LastCommand& last, const std::vector<Subject>& subjects) {
    std::string changed;
    for (std::size_t number = 0; number < subjects.size(); ++number) {
        const std::string& present = subjects[number].getPresent();
        if (present != last.after[number] && present != last.before[number]) {
            changed += (changed.empty() ? "" : ", ") + subjects[number].describe();
        }
    }
    if (!changed.empty()) {
        throw RequestError("\"" + last.command + "\" stays: changed since then: " + changed + '.');
    }
}

} // namespace

ChangeLog::ChangeLog(Store& changedStore, const std::string& author, std::string command) : last(findLast(author)) {
    if (last == nullptr) {
        last = &changedStore.make<LastCommand>();
    }
    last->author = author;
    last->command = std::move(command);
    last->undone = false;
    last->subjects.clear();
    last->before.clear();
    last->after.clear();
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
    last->subjects.push_back(std::move(subject));
    last->before.push_back(std::move(before));
    last->after.push_back(std::move(after));
}

std::string undoLastCommand(Store& store, const std::string& author) {
    LastCommand* const last = findLast(author);
    if (last == nullptr) {
        throw RequestError("There is no command of " + (author.empty() ? "yours" : author) + " in " +
                           store.getPath().string() + " that could be taken back.");
    }
    const Notebook notebook(store);
    EditIndex edits(Store::getRecords());
    std::vector<Subject> subjects = subjectsOf(*last, notebook, edits);
    requireUnchanged(*last, subjects);
    for (std::size_t number = 0; number < subjects.size(); ++number) {
        subjects[number].become(store, last->before[number]);
    }
    std::swap(last->before, last->after);
    last->undone = !last->undone;
    std::string done = (last->undone ? "Taken back: " : "Done again: ") + last->command + '.';
    store.write();
    for (const Subject& subject : subjects) {
        if (subject.getRemoved() != nullptr) {
            store.remove(*subject.getRemoved());
        }
    }
    return done;
}

} // namespace annotate

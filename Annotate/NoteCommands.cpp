#include "Annotate/CommandChanges.h"
#include "Annotate/Commands.h"
#include "Annotate/Filter.h"
#include "Annotate/Model.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Notes.h"
#include "Annotate/Table.h"
#include "Annotate/Terminal.h"
#include "Annotate/TextFile.h"
#include "Annotate/Undo.h"

#include <algorithm>

namespace annotate {

namespace {

/// As in "Note 3 is", "Notes 3 and 4 are" or "Notes 3, 4 and 5 are".
std::string beginSentence(const std::vector<std::int64_t>& numbers) {
    std::string text = numbers.size() == 1 ? "Note " : "Notes ";
    for (std::size_t place = 0; place < numbers.size(); ++place) {
        text += place == 0 ? "" : place + 1 == numbers.size() ? " and " : ", ";
        text += std::to_string(numbers[place]);
    }
    return text + (numbers.size() == 1 ? " is" : " are");
}

std::vector<std::int64_t> withoutRepetitions(std::vector<std::int64_t> numbers) {
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

/// The store with its notes, for a command that changes some.
class NotesUnderWay {
public:
    explicit NotesUnderWay(const Arguments& arguments)
        : path(storePath(arguments)),
          author(authorOf(arguments)),
          store(path),
          notebook(store),
          changes(store, author, arguments.command) {}

    /// Throws RequestError if there is none of one of the numbers.
    std::vector<Note*> find(const std::vector<std::int64_t>& numbers) const {
        std::vector<Note*> found(numbers.size());
        std::transform(numbers.begin(), numbers.end(), found.begin(),
                       [this](std::int64_t number) { return &notebook.find(number); });
        return found;
    }

    template <typename Action>
    void change(Note& note, const Action& action) {
        changes.change(note, [&] {
            action(note);
            note.changedBy = author;
            note.changed = now();
        });
    }

    void add(const Note& content) {
        const Note& note = notebook.add(content, author);
        changes.add(note);
        changes.write();
        printStored(beginSentence({*note.number}) + " stored in " + path.string() + '.');
    }

    void remove(const std::vector<Note*>& notes) {
        for (const Note* const note : notes) {
            changes.remove(*note);
        }
        changes.write({notes.begin(), notes.end()});
    }

    void write() { changes.write(); }

private:
    std::filesystem::path path;
    std::string author;
    Store store;
    Notebook notebook;
    CommandChanges changes;
};

/// The text that is given, or what is on standard input if that is a dash, without the line end that closes it. Throws
/// RequestError if it is no text for a note.
std::string noteText(std::string text) {
    if (text == "-") {
        text = readTextFile(text);
        if (text.ends_with('\n')) {
            text.pop_back();
            if (text.ends_with('\r')) {
                text.pop_back();
            }
        }
    }
    requireText(text);
    return text;
}

void setResolved(const Arguments& arguments, bool resolved) {
    requireNamedStore(arguments);
    const auto numbers = withoutRepetitions(arguments.numbers);
    NotesUnderWay notes(arguments);
    for (Note* const note : notes.find(numbers)) {
        if (note->resolved != resolved) {
            notes.change(*note, [resolved](Note& changed) { changed.resolved = resolved; });
        }
    }
    notes.write();
    printStored(beginSentence(numbers) + (resolved ? " resolved." : " open."));
}

} // namespace

void addNote(const Arguments& arguments) {
    Note note;
    note.text = noteText(*arguments.text);
    note.priority = arguments.priority.value_or(0);
    note.resolved = arguments.resolved;
    note.ownerId = idNamed(arguments, Model::read(arguments.model), arguments.globalId);
    NotesUnderWay(arguments).add(note);
}

void editNote(const Arguments& arguments) {
    if (!arguments.text && !arguments.priority) {
        throw UsageError("Give the new TEXT, or --priority, or both.");
    }
    const std::string given = arguments.text ? noteText(*arguments.text) : "";
    requireNamedStore(arguments);
    NotesUnderWay notes(arguments);
    Note& note = *notes.find(arguments.numbers).front();
    const std::string& text = arguments.text ? given : note.text;
    const int priority = arguments.priority.value_or(note.priority);
    const bool isChanged = text != note.text || priority != note.priority;
    if (isChanged) {
        notes.change(note, [&](Note& changed) {
            changed.text = text;
            changed.priority = priority;
        });
        notes.write();
    }
    printStored(beginSentence(arguments.numbers) + (isChanged ? " changed." : " like that already."));
}

void resolveNotes(const Arguments& arguments) {
    setResolved(arguments, true);
}

void reopenNotes(const Arguments& arguments) {
    setResolved(arguments, false);
}

void removeNotes(const Arguments& arguments) {
    requireNamedStore(arguments);
    const auto numbers = withoutRepetitions(arguments.numbers);
    NotesUnderWay notes(arguments);
    notes.remove(notes.find(numbers));
    printStored(beginSentence(numbers) + " removed; the command undo brings " + (numbers.size() == 1 ? "it" : "them") +
                " back.");
}

void listNotes(const Arguments& arguments) {
    Filter filter(arguments);
    const FilteredModel filtered(arguments, filter);
    const Model& model = filtered.getModel();
    std::vector<Row> rows;
    auto notes = numberedNotes(filtered.getRecords());
    std::stable_sort(notes.begin(), notes.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [number, note] : notes) {
        const ModelObject* const object = model.find(note->ownerId);
        const bool isOfState = arguments.open == arguments.onlyResolved || note->resolved == arguments.onlyResolved;
        if (isOfState && filter.takesOwner(note->ownerId, object) &&
            (filter.takesAct(note->author, note->made) || filter.takesAct(note->changedBy, note->changed))) {
            rows.push_back({std::to_string(number), note->ownerId.toString(false), classOf(object), nameOf(object),
                            std::to_string(note->priority), note->resolved ? "resolved" : "open", note->author,
                            shownTime(note->made), note->changedBy, shownTime(note->changed), note->text});
        }
    }
    if (!arguments.globalId.empty() && rows.empty()) {
        objectNamed(arguments, model, arguments.globalId); // throws if there is none
    }
    printRemarks(filter, rows.empty());
    printTable(arguments,
               {{"Number", true},
                {"GlobalId"},
                {"Class"},
                {"Name"},
                {"Priority", true},
                {"State"},
                {"Author"},
                {"Time"},
                {"Changed by"},
                {"Changed"},
                {"Text"}},
               rows);
}

void undo(const Arguments& arguments) {
    requireNamedStore(arguments);
    Store store(storePath(arguments));
    printStored(undoLastCommand(store, authorOf(arguments)));
}

} // namespace annotate

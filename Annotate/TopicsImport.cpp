#include "Annotate/TopicsImport.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/CommandChanges.h"
#include "Annotate/Interruption.h"
#include "Annotate/Model.h"
#include "Annotate/Notes.h"
#include "Annotate/Terminal.h"
#include "Annotate/TopicReading.h"
#include "Annotate/TopicText.h"

#include <algorithm>
#include <iostream>
#include <unordered_map>

namespace annotate {

namespace {

std::optional<Time> lastChange(const Note& note) {
    return note.changed ? note.changed : note.made;
}

/// Whether a topic tells what the note does.
bool isSame(const Note& note, const Note& topic) {
    return textOf(titledText(note.text)) == topic.text && note.priority == topic.priority &&
           note.resolved == topic.resolved;
}

/// The first of the objects that the model has.
std::optional<orv::Guid> ownerIn(const Model& model, const Topic& topic) {
    for (const std::string& globalId : topic.globalIds) {
        if (orv::Guid id; id.boSet(globalId) && model.find(id) != nullptr) {
            return id;
        }
    }
    return std::nullopt;
}

/// An import of topics into the store.
class TopicsUnderWay {
public:
    explicit TopicsUnderWay(const Arguments& arguments)
        : model(Model::read(arguments.model)),
          store(storePath(arguments)),
          notebook(store),
          changes(store, authorOf(arguments), arguments.command) {
        for (Note* const note : notebook.getNotes()) {
            known.emplace(*note->id, note);
        }
    }

    void take(const Topic& topic) {
        const auto found = known.find(*topic.note.id);
        if (found != known.end()) {
            change(*found->second, topic.note);
            return;
        }
        const std::optional<orv::Guid> owner = ownerIn(model, topic);
        if (!owner) {
            unplaced.push_back(topic.note.text);
            return;
        }
        Note note = topic.note;
        note.ownerId = *owner;
        changes.add(notebook.put(note));
        severalObjects += topic.globalIds.size() > 1 ? 1 : 0;
        ++added;
    }

    void write() {
        if (added + changed > 0) {
            changes.write();
        }
    }

    std::string describe(const std::string& path) const {
        std::string text = "Nothing was stored.";
        if (added + changed > 0) {
            text = countOf(added, "note") + " added and " + std::to_string(changed) + " changed in " + path + '.';
        }
        return same == 0 ? text : text + ' ' + countOf(same, "note was", "notes were") + " like that already.";
    }

    void printRemarks() const {
        for (const std::string& text : unplaced) {
            std::cerr << "annotate: Not placed, as the model has none of its objects: "
                      << printable(text.substr(0, text.find('\n'))) << '\n';
        }
        if (severalObjects > 0) {
            std::cerr << "annotate: " << countOf(severalObjects, "topic is", "topics are")
                      << " on several objects; each note is on the first that the model has.\n";
        }
        for (const std::int64_t number : kept) {
            std::cerr << "annotate: Note " << number << " stays, as the topic isn't newer.\n";
        }
    }

private:
    void change(Note& note, const Note& topic) {
        if (isSame(note, topic)) {
            ++same;
        } else if (lastChange(topic) <= lastChange(note)) {
            kept.push_back(*note.number);
        } else {
            changes.change(note, [&] {
                note.text = topic.text;
                note.priority = topic.priority;
                note.resolved = topic.resolved;
                note.changed = topic.changed;
                note.changedBy = topic.changedBy;
            });
            ++changed;
        }
    }

    Model model;
    Store store;
    Notebook notebook;
    CommandChanges changes;
    std::unordered_map<orv::Guid, Note*> known;
    std::vector<std::string> unplaced; ///< The texts of those topics.
    std::vector<std::int64_t> kept;    ///< The numbers of notes that are newer than their topics.
    std::size_t severalObjects = 0;
    std::size_t added = 0;
    std::size_t changed = 0;
    std::size_t same = 0;
};

} // namespace

bool isTopicsArchive(const std::filesystem::path& path) {
    const std::string ending = path.extension().string();
    return equalsInAnyCase(ending, ".bcf") || equalsInAnyCase(ending, ".bcfzip");
}

void importTopics(const Arguments& arguments) {
    Interruption interruption("Nothing was stored.");
    const TopicsRead read = readTopics(arguments.file);
    TopicsUnderWay topics(arguments);
    std::for_each(read.topics.begin(), read.topics.end(), [&topics](const Topic& topic) { topics.take(topic); });
    interruption.hold();
    topics.write();
    printStored(topics.describe(storePath(arguments).string()));
    interruption.release();
    topics.printRemarks();
    for (const auto& [what, count] : read.leftOut) {
        std::cerr << "annotate: Left out: " << what << " (" << count << ").\n";
    }
}

} // namespace annotate

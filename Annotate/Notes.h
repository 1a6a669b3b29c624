#pragma once

#include "Annotate/Note.h"
#include "Annotate/Store.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace annotate {

/// The notes among the records, in their order, each with its number. One without, or with one that a note before it
/// has, as where a copy was put into the file by hand, gets the number that the next writing command would give it.
std::vector<std::pair<std::int64_t, Note*>> numberedNotes(const Records& records);

/// That there is no note of the number.
RequestError noSuchNote(const std::string& number);

/// Throws RequestError if a note with that text would have none.
void requireText(const std::string& text);

/// The notes of the store for a command that changes some.
class Notebook {
public:
    /// Gives numbers and ids to the notes that have none; they are in the file with the next write.
    explicit Notebook(Store& notesStore);

    /// The note of that number. Throws RequestError if there is none.
    Note& find(std::int64_t number) const;

    /// Null if there is none.
    Note* tryFind(std::int64_t number) const;

    const std::vector<Note*>& getNotes() const { return notes; }

    /// A new note with a number that none has had and the object, the text, the priority and the state of the content.
    /// It is by the author and now unless the content tells when it was made, and has an id of its own unless the
    /// content tells one.
    Note& add(const Note& content, const std::string& author);

    /// A new note as the content tells, but for its number.
    Note& put(const Note& content);

private:
    Store* store;
    std::vector<Note*> notes;
    std::unordered_map<std::int64_t, Note*> ofNumber;
    LastNoteNumber* last = nullptr;
};

/// The note's id. One of an annotate before 0.2 gets it from its number and object, the same one each time.
orv::Guid idOf(std::int64_t number, const Note& note);

/// A new id, as random as the system's generator makes it.
orv::Guid makeId();

/// All fields of the note in a line, for undo.
std::string textOfNote(const Note& note);

/// Sets the fields of the note to those that textOfNote wrote.
void setNote(Note& note, std::string_view text);

} // namespace annotate

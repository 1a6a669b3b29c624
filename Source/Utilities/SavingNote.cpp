#include "Utilities/SavingNote.h"

#include "Utilities/Beside.h"
#include "Utilities/KeptCopy.h"
#include "Utilities/NoteContent.h"

#include <utility>

namespace orv::utilities {

namespace {

namespace fs = std::filesystem;

fs::path pathBeside(const fs::path& path) {
    return beside(path, ".saving");
}

/// Whether a directory with that outcome takes no new file, whatever is tried.
bool isRefusal(std::errc outcome) {
    return outcome == std::errc::permission_denied || outcome == std::errc::operation_not_permitted ||
           outcome == std::errc::read_only_file_system || outcome == std::errc::file_exists;
}

/// Whether something with that outcome of opening it or of asking for its state can't be a note: nothing, a link, or no
/// regular file.
bool isNone(std::errc outcome) {
    return outcome == std::errc::no_such_file_or_directory || outcome == std::errc::too_many_symbolic_link_levels ||
           outcome == std::errc::is_a_directory || outcome == std::errc::not_supported;
}

/// Opens what has the note's name and reads it. Nothing is open, and the outcome is `done`, if that is none that this
/// library has made; an empty file that can't be opened is none either.
std::errc openNote(const fs::path& path, Opening opening, Descriptor& note, std::string& content) {
    std::errc outcome{};
    note = Descriptor::open(path, opening, outcome);
    FileState state;
    if (note.isOpen()) {
        outcome = uninterrupted([&] { return systemCalls.getState(note.get(), state); });
    } else if (!isNone(outcome)) {
        const std::errc stateOutcome = uninterrupted([&] { return systemCalls.getStateOf(path, state); });
        outcome = isNone(stateOutcome) || (stateOutcome == done && state.size == 0) ? done : outcome;
    }
    auto bytes = outcome == done && note.isOpen() ? note.read() : std::string();
    if (!bytes) {
        outcome = std::errc::io_error;
    }
    content = std::move(bytes).value_or("");
    if (outcome != done || !NoteContent::isLikely(content)) {
        note = Descriptor();
        content.clear();
    }
    return isNone(outcome) ? done : outcome;
}

/// The same, to remove it if that can be.
std::errc openNote(const fs::path& path, Descriptor& note, std::string& content) {
    const std::errc outcome = openNote(path, Opening::WriteNoLink, note, content);
    return outcome == done ? done : openNote(path, Opening::ReadNoLink, note, content);
}

/// An empty note is none, so that one whose removal doesn't reach the disk, or fails, isn't taken for a new one.
void removeNote(const Descriptor& note, const fs::path& path) {
    if (note.isOpen()) {
        note.setSize(0);
    }
    removeFile(path);
}

/// Leaves the document whole and on the disk, as it is or as it was before. It is foreign if somebody has written it
/// since the note was made: then what the note holds has to be kept.
std::errc putRight(const NoteContent& note, const Descriptor& document, const fs::path& path, bool& isForeign) {
    const auto content = document.read();
    if (!content) {
        return std::errc::io_error;
    }
    auto size = note.sizeIfWhole(*content);
    if (!size) {
        if (note.isOfSeries() && !keepCopy(document, path, *content)) {
            return std::errc::io_error;
        }
        const auto old = note.undone(*content);
        if (!old) {
            isForeign = true;
            return done;
        }
        const std::errc outcome = document.write(*old, 0);
        if (outcome != done) {
            return outcome;
        }
        size = old->size();
    }
    const std::errc outcome = document.setSize(*size);
    return outcome == done ? document.sync() : outcome;
}

} // namespace

std::errc SavingNote::make(const Descriptor& document, const fs::path& path, std::string_view content,
                           SavingNote& made) {
    made.notePath = pathBeside(path);
    std::errc outcome{};
    made.file = Descriptor::open(made.notePath, Opening::MakeNew, outcome);
    if (!made.file.isOpen()) {
        return isRefusal(outcome) ? done : outcome;
    }
    made.file.takeAccess(document); // or its owner alone may read it
    outcome = made.file.write(content, 0);
    if (outcome == done) {
        outcome = made.file.sync();
    }
    if (outcome == done) {
        outcome = syncDirectory(made.notePath.parent_path());
    }
    if (outcome != done && !isRefusal(outcome)) {
        made.end();
        return outcome;
    }
    return done;
}

bool SavingNote::standsBeside(const fs::path& path) const {
    const auto own = file.isOpen() ? file.getState() : std::nullopt;
    const auto standing = own ? FileState::of(pathBeside(path)) : std::nullopt;
    return standing && standing->identity == own->identity;
}

void SavingNote::announce(const Digest& after) {
    file.write(NoteContent::digestAfter(after), NoteContent::digestPosition(announced++));
}

void SavingNote::end() {
    if (file.isOpen()) {
        removeNote(std::exchange(file, Descriptor()), notePath);
    }
}

SavingNote::Settlement SavingNote::settle(const Descriptor& document, const fs::path& path, const SavingNote* own) {
    const fs::path notePath = pathBeside(path);
    Descriptor found;
    std::string bytes;
    if (own != nullptr && own->standsBeside(path)) {
        return {done, false};
    }
    std::errc outcome = openNote(notePath, found, bytes);
    if (outcome != done || !found.isOpen()) {
        return {outcome, false};
    }
    if (const auto note = NoteContent::parse(bytes)) { // otherwise it was never whole: the document wasn't touched
        bool isForeign = false;
        outcome = putRight(*note, document, path, isForeign);
        if (isForeign) {
            return {renameFile(notePath, unusedCopyPath(path)), true};
        }
    }
    if (outcome == done) {
        removeNote(found, notePath);
    }
    return {outcome, true};
}

std::errc SavingNote::beginDocument(const fs::path& path) {
    const fs::path notePath = pathBeside(path);
    Descriptor found;
    std::string bytes;
    std::errc outcome = openNote(notePath, found, bytes);
    if (outcome != done) {
        return outcome;
    }
    if (found.isOpen()) {
        removeNote(found, notePath);
    }
    outcome = syncDirectory(path.parent_path());
    return isRefusal(outcome) ? done : outcome;
}

std::errc SavingNote::readBeside(const fs::path& path, std::string& content) {
    Descriptor note;
    return openNote(pathBeside(path), Opening::ReadNoLink, note, content);
}

} // namespace orv::utilities

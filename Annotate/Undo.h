#pragma once

#include "Annotate/LastCommand.h"
#include "Annotate/Store.h"
#include "Host/PropertyEdits.h"

#include <string>

namespace annotate {

/// What the command under way changes, for undo.
class ChangeLog {
public:
    ChangeLog(Store& changedStore, const std::string& author, const std::string& command);

    /// The note is new, is removed, or is changed by the action.
    void add(const Note& note) { log(subjectOf(note), "none", textOf(note)); }
    void remove(const Note& note) { log(subjectOf(note), textOf(note), "none"); }
    template <typename Action>
    void change(Note& note, const Action& action) {
        std::string before = textOf(note);
        action();
        log(subjectOf(note), std::move(before), textOf(note));
    }

    /// The edit takes the place of the one in the line, or of none if that is empty.
    void replace(const std::string& line, const orv::host::ObjectEdit& edit);

    /// The edit in the line goes from the object.
    void remove(const std::string& line, const orv::Guid& id);

    /// Writes the store as Store::write does, with this as the author's last command if there was a change. What was
    /// changed, or is removed, and what this tells of it come into the file together.
    void
    write(const std::vector<const orv::domain::shared::enhancementsforreferencemodel::EnhancementBase*>& removed = {});

private:
    static std::string subjectOf(const Note& note);
    static std::string textOf(const Note& note);
    void log(std::string subject, std::string before, std::string after);

    Store* store;
    LastCommand changes;
};

/// Takes the author's last command back, or brings it forward if it was taken back, and returns a sentence on it.
/// Throws RequestError, with nothing changed, if there is none, if what it changed has been changed again since, or if
/// what the store tells of it isn't understood.
std::string undoLastCommand(Store& store, const std::string& author);

} // namespace annotate

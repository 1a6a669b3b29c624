#pragma once

#include "Annotate/LastCommand.h"
#include "Annotate/Store.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <vector>

namespace annotate {

/// What the command under way changes, for undo.
class CommandChanges {
public:
    CommandChanges(Store& changedStore, const std::string& author, const std::string& command);

    // To be called for a new note, ahead of a note's removal, and for an action that changes one.

    void add(const Note& note);
    void remove(const Note& note);
    template <typename Action>
    void change(Note& note, const Action& action) {
        std::string before = textOf(note);
        action();
        add(subjectOf(note), std::move(before), textOf(note));
    }

    /// Notes that the edit replaces the one in the line, or is new if that is empty.
    void replace(const std::string& line, const orv::host::ObjectEdit& edit);

    /// Notes that the edit in the line is removed from the object.
    void remove(const std::string& line, const orv::Guid& id);

    /// Writes the store as Store::write does, with this as the author's last command if there was a change. What was
    /// changed, or is removed, and what this tells of it come into the file together.
    void
    write(const std::vector<const orv::domain::shared::enhancementsforreferencemodel::EnhancementBase*>& removed = {});

private:
    static std::string subjectOf(const Note& note);
    static std::string textOf(const Note& note);
    void add(std::string subject, std::string before, std::string after);
    void writeBehindAll();
    LastCommand& recordToReplace();

    Store* store;
    LastCommand changes;
};

} // namespace annotate

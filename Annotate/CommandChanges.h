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

    /// The note is new, is removed, or is changed by the action.
    void add(const Note& note);
    void remove(const Note& note);
    template <typename Action>
    void change(Note& note, const Action& action) {
        std::string before = textOf(note);
        action();
        add(subjectOf(note), std::move(before), textOf(note));
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
    void add(std::string subject, std::string before, std::string after);
    void writeBehindAll();
    LastCommand& recordToReplace();

    Store* store;
    LastCommand changes;
};

} // namespace annotate

#pragma once

#include "Annotate/Note.h"

#include <string>
#include <vector>

namespace annotate {

/// What an author's last command changed, so that it can be taken back. There is one for each author; it belongs to no
/// object. The three lists go together, a place for each note or edit.
struct LastCommand : orv::host::Record<LastCommand> {
    static constexpr auto entityName = "LastCommand";

    std::string author;
    std::string command;               ///< As its name and what it was given, for people.
    bool undone = false;               ///< It was taken back; doing that again brings it forward.
    std::vector<std::string> subjects; ///< "note 3", or "edit" and a GlobalId.
    std::vector<std::string> before;   ///< As textOfNote writes it, or the line of an edit; "none" if there was none.
    std::vector<std::string> after;

    static constexpr auto fields = std::tuple(
        orv::host::field("Author", &LastCommand::author), orv::host::field("Command", &LastCommand::command),
        orv::host::field("Undone", &LastCommand::undone), orv::host::field("Subject", &LastCommand::subjects),
        orv::host::field("Before", &LastCommand::before), orv::host::field("After", &LastCommand::after));
};

} // namespace annotate

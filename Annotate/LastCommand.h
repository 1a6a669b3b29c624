#pragma once

#include "Annotate/Note.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
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
    std::vector<std::string> before; ///< As textOfNote writes it, or the line of an edit; noSubject if there was none.
    std::vector<std::string> after;

    static constexpr auto fields = std::tuple(
        orv::host::field("Author", &LastCommand::author), orv::host::field("Command", &LastCommand::command),
        orv::host::field("Undone", &LastCommand::undone), orv::host::field("Subject", &LastCommand::subjects),
        orv::host::field("Before", &LastCommand::before), orv::host::field("After", &LastCommand::after));

    /// How many changes the lists tell of. A file that was edited by hand may have more in one of them.
    std::size_t countChanges() const;
};

/// The author's that tell of a change.
std::vector<LastCommand*> lastCommandsOf(const std::string& author);

/// Those that tell of none, as a command leaves one of its own before it removes what it replaces.
std::vector<const orv::domain::shared::enhancementsforreferencemodel::EnhancementBase*> emptyLastCommands();

/// What stands for a note or an edit that isn't there.
constexpr std::string_view noSubject = "none";

std::string subjectOfNote(std::int64_t number);
std::string subjectOfEdit(const orv::Guid& owner);

/// What a command changed: a note, or an edit of a property.
struct ChangedSubject {
    std::optional<std::int64_t> note; ///< Its number; nothing for an edit.
    orv::Guid owner;                  ///< Of an edit, as are the set and the property.
    std::string set;
    std::string property;
    std::string name; ///< As in "note 3" or "Pset_WallCommon.FireRating of 1jXyBr6EAquR0PHYXIrQ4_".
};

/// The subject of the command's change in that place; nothing if what the store tells isn't understood.
std::optional<ChangedSubject> changedSubject(const LastCommand& command, std::size_t place);

} // namespace annotate

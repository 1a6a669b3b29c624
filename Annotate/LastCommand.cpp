#include "Annotate/LastCommand.h"

#include "Annotate/Store.h"
#include "Host/FieldText.h"
#include "Host/PropertyEdits.h"

#include <algorithm>

namespace annotate {

using orv::domain::shared::enhancementsforreferencemodel::EnhancementBase;

namespace {

constexpr std::string_view noteSubject = "note ";
constexpr std::string_view editSubject = "edit ";

} // namespace

std::size_t LastCommand::countChanges() const {
    return std::min({subjects.size(), before.size(), after.size()});
}

std::vector<LastCommand*> lastCommandsOf(const std::string& author) {
    std::vector<LastCommand*> commands = allOf<LastCommand>(Store::getRecords());
    std::erase_if(commands, [&author](const LastCommand* command) {
        return command->author != author || command->subjects.empty();
    });
    return commands;
}

std::vector<const EnhancementBase*> emptyLastCommands() {
    std::vector<const EnhancementBase*> empty;
    for (const LastCommand* const command : allOf<const LastCommand>(Store::getRecords())) {
        if (command->subjects.empty()) {
            empty.push_back(command);
        }
    }
    return empty;
}

std::string subjectOfNote(std::int64_t number) {
    return std::string(noteSubject) + std::to_string(number);
}

std::string subjectOfEdit(const orv::Guid& owner) {
    return std::string(editSubject) + owner.toString(false);
}

std::optional<ChangedSubject> changedSubject(const LastCommand& command, std::size_t place) {
    const std::string& subject = command.subjects[place];
    ChangedSubject changed;
    if (subject.starts_with(noteSubject)) {
        changed.note.emplace();
        changed.name = subject;
        const bool isNumber = orv::host::take(std::string_view(subject).substr(noteSubject.size()), *changed.note);
        return isNumber ? std::optional(changed) : std::nullopt;
    }
    const std::string& line = command.before[place] == noSubject ? command.after[place] : command.before[place];
    const auto edit = orv::host::editOf(line);
    if (!edit || !subject.starts_with(editSubject) || !changed.owner.boSet(subject.substr(editSubject.size()))) {
        return std::nullopt;
    }
    changed.set = edit->set;
    changed.property = edit->property;
    changed.name = edit->set + '.' + edit->property + " of " + changed.owner.toString(false);
    return changed;
}

} // namespace annotate

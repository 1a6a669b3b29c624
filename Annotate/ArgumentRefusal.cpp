#include "Annotate/ArgumentRefusal.h"

#include "Annotate/CommandHelp.h"

#include <algorithm>
#include <string>
#include <vector>

namespace annotate {

namespace {

/// Of the words that have no place, the option if there is one.
std::string mainOf(const std::vector<std::string>& words) {
    const auto option = std::find_if(words.begin(), words.end(),
                                     [](const auto& word) { return word.starts_with('-') && word != "--"; });
    const std::string& word = option == words.end() ? words.front() : *option;
    return word.substr(0, word.find('\0')); // which main puts behind some
}

/// What CLI11 says begins with the name of what it is about.
std::string subjectOf(const CLI::App& command, const std::string& message) {
    const std::string name = message.substr(0, message.find_first_of(": "));
    const CLI::Option* const option = command.get_option_no_throw(name);
    return option == nullptr || option->get_option_text().empty() ? name : option->get_option_text();
}

std::string problemWith(const CLI::App& command, const CLI::ParseError& error) {
    const std::string message = error.what();
    const std::string subject = subjectOf(command, message);
    switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::RequiredError:
        return subject + " is missing.";
    case CLI::ExitCodes::ExtrasError:
        return "There is no place for " + mainOf(command.remaining()) + '.';
    case CLI::ExitCodes::ExcludesError:
        return subject + " and " + message.substr(message.rfind(' ') + 1) + " can't be given together.";
    case CLI::ExitCodes::ArgumentMismatch:
        if (message.ends_with("override")) { // of a flag
            return "--" + subject + " takes no value.";
        }
        return subject + (message.ends_with("missing") ? " has no value behind it." : " can be given only once.");
    case CLI::ExitCodes::ValidationError: // by refuseEmpty, the only one that says so
        return "An empty text was given for " + subject + '.';
    default:
        return message + '.';
    }
}

} // namespace

UsageError refusalOf(const CLI::App& app, const CLI::ParseError& error) {
    if (const std::string refusal = explainRefusal(app); !refusal.empty()) {
        return UsageError(refusal);
    }
    const CLI::App& command = *app.get_subcommands().front();
    const std::vector<std::string> early = app.remaining();
    const std::string problem = early.empty() ? problemWith(command, error)
                                              : mainOf(early) + " can't stand before the command " +
                                                    command.get_name() + ", where only MODEL does.";
    return UsageError(problem + " Usage: " + usageOf(command));
}

} // namespace annotate

#pragma once

#include "Annotate/Arguments.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

// What is told of the commands. It all comes from how they are described to CLI11.

/// Null if there is no such command.
const CLI::App* findCommand(const CLI::App& app, std::string_view name);

/// Without those that take their places without a name.
std::vector<const CLI::Option*> namedOptions(const CLI::App& command);

/// Whether the command can't do without the model in front of it.
bool needsModel(const CLI::App& command);

/// What stands behind the command, in its order.
std::vector<const CLI::Option*> positionals(const CLI::App& command);

/// As in "GLOBALID TEXT", without brackets around what may be left out.
std::string wordsOf(const CLI::Option& positional);

/// How the command is typed, as in "annotate MODEL note [OPTIONS] GLOBALID TEXT".
std::string usageOf(const CLI::App& command);

/// For addCommands: how CLI11 writes the help.
std::shared_ptr<CLI::FormatterBase> helpFormatter();

/// The help of the command, or of the program if the name is empty. Throws UsageError if there is no such command.
std::string helpOn(const CLI::App& app, const std::string& name);

/// That the word is no command, and which there are.
UsageError unknownCommand(const CLI::App& app, const std::string& word);

/// What to say of arguments that CLI11 refuses, if that is more than it says itself: a command or an option that isn't
/// known. Empty text otherwise.
std::string explainRefusal(const CLI::App& app);

} // namespace annotate

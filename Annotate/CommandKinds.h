#pragma once

#include "Annotate/Arguments.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <functional>
#include <string>

namespace annotate {

/// What is told of a command. Help, the man page and the completion all take it from there.
struct CommandText {
    std::string name;
    std::string description;
    std::string example; ///< What is typed behind "annotate ".
};

using Command = void (*)(const Arguments& arguments);

/// CLI11 takes an empty value for one that wasn't given, and a script's unset variable is one.
std::string refuseEmpty(const std::string& value);

/// A command that needs no model.
CLI::App* addCommand(CLI::App& app, const CommandText& text, const std::function<void()>& command);

/// A command on a model and the additions to it. One that doesn't need all definitions goes on without those of files
/// beside the model that can't be taken.
CLI::App* addStoreCommand(CLI::App& app, const CommandText& text, Arguments& arguments, Command command,
                          bool needsDefinitions = false);

/// One that changes the additions.
CLI::App* addWritingCommand(CLI::App& app, const CommandText& text, Arguments& arguments, Command command);

/// An option or argument that names a file, in UTF-8 on every platform.
CLI::Option* addPath(CLI::App& app, const std::string& name, std::filesystem::path& path,
                     const std::string& explanation);

// The options that several commands have.

void addListing(CLI::App* command, Arguments& arguments);
void addObjectFilters(CLI::App* command, Arguments& arguments);

/// Whether the option is one of the object filters.
bool choosesObjects(const CLI::Option& option);

/// Those of listings of what users did.
void addActFilters(CLI::App* command, Arguments& arguments);

/// Of a note.
void addNumber(CLI::App* command, Arguments& arguments);

void addNumbers(CLI::App* command, Arguments& arguments);
void addPriority(CLI::App* command, Arguments& arguments, const std::string& explanation);
void addStrictness(CLI::App* command, Arguments& arguments);
void addUnit(CLI::App* command, Arguments& arguments);

/// Of commands that know property sets: files that define more of them, which are taken before the command runs.
void addDefinitionFiles(CLI::App* command, Arguments& arguments);

} // namespace annotate

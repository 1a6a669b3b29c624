#pragma once

#include "Annotate/Arguments.h"

#include <CLI/CLI.hpp>

namespace annotate {

/// Makes the commands with their options, which fill the arguments and then run the command.
void addCommands(CLI::App& app, Arguments& arguments);

} // namespace annotate

#pragma once

#include "Annotate/Arguments.h"

#include <CLI/CLI.hpp>

namespace annotate {

/// What to say of arguments that CLI11 refuses: what is wrong with them, and how the command is typed.
UsageError refusalOf(const CLI::App& app, const CLI::ParseError& error);

} // namespace annotate

#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace annotate {

/// The manual page of the program, as man reads it.
std::string manPage(const CLI::App& app);

} // namespace annotate

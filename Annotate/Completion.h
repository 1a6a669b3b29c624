#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace annotate {

/// What the last of the words, which may be empty, can be completed to, the words being those behind the program's
/// name. Empty where a file name or free text is expected.
std::vector<std::string> completions(const CLI::App& app, const std::vector<std::string>& words);

} // namespace annotate

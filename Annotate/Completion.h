#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace annotate {

/// What the last of the words, which may be empty, can be completed to, the words being those behind the program's
/// name. None where a file or a text of one's own stands.
std::vector<std::string> completions(const CLI::App& app, const std::vector<std::string>& words);

} // namespace annotate

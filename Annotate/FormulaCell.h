#pragma once

#include <string>
#include <string_view>

namespace annotate {

// Spreadsheets compute a cell that begins like a formula, whoever wrote it. An apostrophe before it keeps it a text.

/// With an apostrophe before a text that a spreadsheet may take for a formula, or that has apostrophes before such a
/// one. Plain numbers like -0.5 stay as they are.
std::string shieldedCell(std::string_view text);

/// The text that shieldedCell made this of; a text that it doesn't make is as it stands.
std::string unshieldedCell(std::string_view text);

} // namespace annotate

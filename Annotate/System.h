#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

// What annotate asks of the operating system itself, beside Turn and Interruption. The bodies lie in a directory of the
// platform's name.

namespace annotate {

enum class StandardStream { Output, Error };

/// To be called first. Prepares the standard streams for bytes as they are, in UTF-8, and returns the words of the
/// command line behind the program's name, in UTF-8.
std::vector<std::string> beginProcess(int argc, char** argv);

/// Nothing if it isn't set.
std::optional<std::string> environmentValue(const std::string& name);

/// Of who runs the process: the full name or, if none is known, that of the account; empty if that isn't either.
std::string userName();

unsigned long processNumber();

bool isTerminal(StandardStream stream);

/// The width of the terminal that standard output is; 80 if it is none or that can't be told.
std::size_t terminalColumns();

/// The columns of a terminal that a character takes which is no control.
std::size_t columnsOf(char32_t character);

/// Why the process may not read or write the file or folder, as far as that shows ahead; no error if it may.
std::errc refusalOfReading(const std::filesystem::path& path);
std::errc refusalOfWriting(const std::filesystem::path& path);

/// Gives the file the permissions that a new one has in its folder.
void giveUsualAccess(const std::filesystem::path& path);

} // namespace annotate

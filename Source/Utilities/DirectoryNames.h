#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace orv::utilities {

/// Appends the names of what the directory holds: SystemCalls::list of every platform.
std::errc listNames(const std::filesystem::path& directory, std::vector<std::filesystem::path>& names);

} // namespace orv::utilities

#pragma once

#include "Utilities/OpenFile.h"

#include <filesystem>

namespace orv::utilities {

/// What FileLock::keepCopy does, for a file that is open for reading and locked.
bool keepCopy(const OpenFile& file, const std::filesystem::path& path);

} // namespace orv::utilities

#pragma once

#include "Utilities/OpenFile.h"

#include <filesystem>

namespace orv::utilities {

/// Keeps the present content of the file that the path names, open for reading and locked, in a copy beside it: a file
/// NAME.kept-UTCTIME with the time to the microsecond, such as notes.xml.kept-20261122T184501.250000Z. There is none of
/// that name before the copy is whole and synced. A kept copy of the same content that is there already will do.
///
/// Gives false, with no part of a copy left behind, if there can be none or the directory can't be read.
bool keepCopy(const OpenFile& file, const std::filesystem::path& path);

} // namespace orv::utilities

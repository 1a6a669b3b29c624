#pragma once

#include "Utilities/Descriptor.h"

#include <filesystem>
#include <string_view>

namespace orv::utilities {

/// Makes sure that a copy of the content, which the file holds or held, is kept in a file NAME.kept-UTCTIME beside the
/// path. The time is to the microsecond, as in notes.xml.kept-20261122T184501.250000Z; a name that would get too long
/// is shortened. No file has such a name before it is whole and on the disk. The same content isn't kept twice; a link
/// to the file itself is no copy. The copy has the file's owner, group and permissions as far as the process may set
/// them, and never more readers.
///
/// Returns false, with no part of a copy left behind, if the copy can't be made or the directory can't be read.
bool keepCopy(const Descriptor& file, const std::filesystem::path& path, std::string_view content);

/// A path for a copy of the file that is kept from now on, and that no file has.
std::filesystem::path unusedCopyPath(const std::filesystem::path& path);

} // namespace orv::utilities

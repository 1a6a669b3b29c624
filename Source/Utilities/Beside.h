#pragma once

#include "OrvExport.h"

#include <filesystem>
#include <string_view>

namespace orv::utilities {

/// The path with its last component followed through links; the path itself if there are more than forty.
ORV_UTILITIES_EXPORT std::filesystem::path resolved(std::filesystem::path path);

/// The path with the mark appended. A name of more than 255 bytes, on Windows of as many units of UTF-16,
/// with room for that many more behind the mark, is shortened: to the same name each time, and to different ones for
/// different names.
std::filesystem::path beside(const std::filesystem::path& path, std::string_view mark, std::size_t room = 0);

} // namespace orv::utilities

#pragma once

#include "OrvExport.h"

#include <filesystem>
#include <string_view>

namespace orv::utilities {

/// The file that the path leads to: its last part, if it is a link, replaced by what it names, and so on. The path
/// itself after forty links.
ORV_UTILITIES_EXPORT std::filesystem::path resolved(std::filesystem::path path);

/// The path of a file in the directory of that one, called like it with the mark behind. A name that would be too long
/// for file systems is shortened, the same one always in the same way and others in others; room is what is to follow
/// the mark, in bytes.
std::filesystem::path beside(const std::filesystem::path& path, std::string_view mark, std::size_t room = 0);

} // namespace orv::utilities

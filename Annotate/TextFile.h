#pragma once

#include <filesystem>
#include <string>

namespace annotate {

/// What the file holds, or standard input if the path is "-". Throws RequestError, with the reason, if it can't be
/// read.
std::string readTextFile(const std::filesystem::path& path);

} // namespace annotate

#include "Utilities/DirectoryNames.h"

namespace orv::utilities {

std::errc listNames(const std::filesystem::path& directory, std::vector<std::filesystem::path>& names) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        names.push_back(entry->path().filename());
    }
    return static_cast<std::errc>(error.default_error_condition().value());
}

} // namespace orv::utilities

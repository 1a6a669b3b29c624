#pragma once

#include "OrvExport.h"
#include "Utilities/FileState.h"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace orv::utilities {

/// What a file held at one moment.
struct DocumentReading {
    std::string content;
    FileState state;            // of the file then
    std::filesystem::path path; // of the file, links resolved
};

/// Reads the file without a lock and changes nothing. While a program writes it, or if one ended within a write, the
/// content is that of before, unless the new one is whole. A saving note that can't be read is waited for half a
/// second, and counts as none then. Nothing if there is no regular file, if it can't be read, or if it changes without
/// end (resource_unavailable_try_again); the error, otherwise zero, says why.
ORV_UTILITIES_EXPORT std::optional<DocumentReading> readDocument(const std::filesystem::path& path,
                                                                 std::error_code& error);

} // namespace orv::utilities

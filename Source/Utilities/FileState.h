#pragma once

#include "OrvExport.h"

#include <array>
#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace orv::utilities {

/// Which file it is, and what tells one state of it from another without reading it.
struct FileState {
    /// A file keeps its identity when it is written or renamed. What the numbers mean is the platform's.
    struct Identity {
        std::uint64_t volume = 0;
        std::array<std::uint64_t, 2> file{};

        auto operator<=>(const Identity&) const = default;
    };

    Identity identity;
    std::uint64_t size = 0;            // in bytes
    std::int64_t modificationTime = 0; // of the content, in nanoseconds since 1970
    std::int64_t changeTime = 0;       // of the content, the permissions or the names, likewise

    bool operator==(const FileState&) const = default;

    /// Whether its times are old enough that any write from now on changes them: file systems keep them in steps of
    /// some milliseconds, or of up to two seconds.
    ORV_UTILITIES_EXPORT bool isOld() const;

    /// The state of the file that the path names, links followed; nothing if there is none, if it is no regular file
    /// or if its state can't be told.
    ORV_UTILITIES_EXPORT static std::optional<FileState> of(const std::filesystem::path& path);
};

} // namespace orv::utilities

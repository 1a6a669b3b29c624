#pragma once

#include "Export.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <tuple>

namespace orv::utilities {

/// Which file it is, and what tells one state of it from another without reading it.
struct FileState {
    /// A file keeps its identity when it is written or renamed.
    struct Identity {
        std::uint64_t device;
        std::uint64_t inode;

        bool operator==(const Identity&) const = default;
        bool operator<(const Identity& other) const {
            return std::tie(device, inode) < std::tie(other.device, other.inode);
        }
    };

    Identity identity;
    std::uint64_t size;            // in bytes
    std::int64_t modificationTime; // of the content, in nanoseconds since 1970
    std::int64_t changeTime;       // of the content, the permissions or the names, likewise

    bool operator==(const FileState&) const = default;

    /// The state of the file that the path names, links followed; nothing if there is none, if it is no regular file
    /// or if its state can't be told.
    ORV_EXPORT static std::optional<FileState> of(const std::filesystem::path& path);
};

} // namespace orv::utilities

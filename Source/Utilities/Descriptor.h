#pragma once

#include "Utilities/FileState.h"
#include "Utilities/SystemCalls.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace orv::utilities {

/// An open file or directory, closed by the destructor. Operations that a signal interrupts are repeated, partial reads
/// and writes continued; they return `done` or why they failed.
class ORV_UTILITIES_EXPORT Descriptor {
public:
    /// Nothing is open if that fails; the outcome says why.
    static Descriptor open(const std::filesystem::path& path, Opening opening, std::errc& outcome);
    static Descriptor open(const std::filesystem::path& path, Opening opening);

    Descriptor() = default;
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    bool isOpen() const { return handle != Handle::None; }

    /// Still owned by this; for operations of SystemCalls that have none here.
    Handle get() const { return handle; }

    // As the operations of SystemCalls of these names. Sizes and positions are in bytes, times in nanoseconds since
    // 1970; lock makes one attempt, and returns resource_unavailable_try_again if another holder has the file.

    std::errc lock(bool exclusive) const;
    void unlock() const;

    /// Nothing if no regular file is open.
    std::optional<FileState> getState() const;

    /// The content up to the end that the file has meanwhile; nothing if it can't be read.
    std::optional<std::string> read() const;

    /// If it fails, a part may be written.
    std::errc write(std::string_view content, std::uint64_t position) const;

    std::errc setSize(std::uint64_t size) const;
    std::errc setModificationTime(std::int64_t time) const;
    std::errc takeAccess(const Descriptor& model) const;
    std::errc sync() const;

private:
    Handle handle = Handle::None;
};

/// Whether the path names anything, links followed. False as well if that can't be told.
ORV_UTILITIES_EXPORT bool exists(const std::filesystem::path& path);

/// Renames the file or directory; what had the new name is replaced.
std::errc renameFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Removes a file or a link.
std::errc removeFile(const std::filesystem::path& path);

/// Returns once the directory's names are on the disk.
std::errc syncDirectory(const std::filesystem::path& directory);

/// Makes the directory and those above it that are missing, from the top, each on the disk before the function returns,
/// if its parent may be read. Whether all are there shows when a file is made in the directory; those that were made
/// stay.
ORV_UTILITIES_EXPORT void makeDirectories(const std::filesystem::path& directory);

} // namespace orv::utilities

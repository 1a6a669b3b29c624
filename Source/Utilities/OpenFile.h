#pragma once

#include "Utilities/FileState.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace orv::utilities {

/// A file descriptor that the caller owns. Calls that a signal interrupts are repeated, partial reads and writes
/// continued. Operations give false, or no value, on failure.
class OpenFile {
public:
    explicit OpenFile(int number) : descriptor(number) {}

    int get() const { return descriptor; }

    /// Nothing if no regular file is open.
    std::optional<FileState> getState() const;

    /// Makes one attempt; see flock(2).
    bool lock(bool exclusive) const;

    void unlock() const;

    /// Reads up to size bytes from the position on. Fewer come at the file's end only. Nothing if that fails.
    std::optional<std::size_t> read(char* buffer, std::size_t size, std::uint64_t position) const;

    /// If it fails, a part may be written.
    bool write(std::string_view content, std::uint64_t position) const;

    bool truncate(std::uint64_t size) const;

    /// Returns once content and size are on the disk.
    bool sync() const;

    /// Sets the time of the last modification, in nanoseconds since 1970.
    bool setModificationTime(std::int64_t time) const;

private:
    int descriptor;
};

/// An open file that is closed at the end, unless it is released.
class OwnedFile : public OpenFile {
public:
    /// Opens the file, with the flags of open(2); isOpen tells whether that worked.
    OwnedFile(const std::filesystem::path& path, int flags, unsigned permissions = 0666);
    OwnedFile(const OwnedFile&) = delete;
    OwnedFile& operator=(const OwnedFile&) = delete;
    ~OwnedFile();

    bool isOpen() const { return get() != -1; }
    void release() { isReleased = true; }

private:
    bool isReleased = false;
};

} // namespace orv::utilities

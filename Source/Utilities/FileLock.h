#pragma once

#include "OrvExport.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

namespace orv::utilities {

class LockedFile;

/// A lock on a file against other processes, with a stream on that file. It lasts as long as the object.
///
/// It is an advisory flock(2) on the file itself, so flock(1) and other programs can take part; on Windows it is one on
/// a byte behind any end of file. It falls when the object or the process ends, however it ends, and isn't passed on to
/// programs that the process starts.
///
/// What is written to the stream goes over the old content from its start, and when the lock is released the file is
/// cut to what was written. If nothing was written, or not all of it could be, the file isn't cut. What happens in the
/// middle may leave parts of both contents.
class ORV_UTILITIES_EXPORT FileLock {
public:
    /// What the hold is for. The stream of ReadWrite takes output only: the file is cut at its position, which reading
    /// would move. Don't seek in it either.
    enum class Access { Read = 0, ReadWrite = 1 };

    /// Locks an existing file, against everyone if exclusive is true, otherwise shared with other shared holders. Makes
    /// one attempt and doesn't wait. Returns null if the file is missing, can't be opened for that access (a directory
    /// can't), is locked by another holder, in this process or in another, or is replaced by another one before the
    /// lock is acquired.
    static std::unique_ptr<FileLock> tryLock(const std::filesystem::path& path, bool exclusive, Access access);

    /// The same, and tells why it returns null: no_such_file_or_directory, permission_denied, is_a_directory and the
    /// like of std::errc, or resource_unavailable_try_again if another holder has the file.
    static std::unique_ptr<FileLock> tryLock(const std::filesystem::path& path, bool exclusive, Access access,
                                             std::error_code& error);

    /// Flushes the stream, cuts the file and unlocks it. A failure leaves no other trace than the file.
    ~FileLock();

    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// The stream on the file, binary, good and at its start when the lock was taken.
    std::fstream& getStream() { return stream; }

private:
    FileLock(std::unique_ptr<LockedFile> locked, Access openedFor);

    std::unique_ptr<LockedFile> file;
    Access access;
    std::fstream stream;
};

} // namespace orv::utilities

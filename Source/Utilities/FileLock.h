#pragma once

#include "Export.h"

#include <filesystem>
#include <fstream>
#include <memory>

namespace orv::utilities {

/// A hold on a file against other processes, with a stream on that file. It lasts as long as the object.
///
/// The lock is an advisory flock(2) on the file itself, so flock(1) and other programs can take part. It falls when the
/// object or the process ends, however it ends, and isn't passed on to programs that the process starts.
///
/// What is written goes over the old content from its start, and at the end of the hold the file is cut to
/// what was written. If nothing was written, or not all of it could be, the file isn't cut.
class ORV_EXPORT FileLock {
public:
    /// What the stream is for. That of ReadWrite takes output only: the file is cut at its position, which reading
    /// would move. Don't seek in it either.
    enum class Access { Read = 0, ReadWrite = 1 };

    /// Locks an existing file, against everyone if exclusive is true, otherwise beside other holders that ask
    /// for no more. Makes one attempt and doesn't wait. Gives null if the file is missing, can't be opened
    /// for that access (a directory can't), or is locked by another holder, in this process or in another.
    static std::unique_ptr<FileLock> tryLock(const std::filesystem::path& path, bool exclusive, Access access);

    /// Makes the file if it is missing, in a directory that exists, and locks it exclusively for writing its
    /// first content. Gives null if that fails, or if the file isn't empty once it is locked: then another
    /// process was quicker, and its content stays.
    static std::unique_ptr<FileLock> tryLockNew(const std::filesystem::path& path);

    /// Flushes the stream, cuts the file and lets go of it. A failure leaves no other trace than the file.
    ~FileLock();

    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// The stream on the file, binary, good and at its start when the lock was taken.
    std::fstream& getStream() { return stream; }

private:
    class Descriptor;

    static std::unique_ptr<FileLock> hold(Descriptor& file, Access access);

    FileLock(int opened, Access openedFor);

    int descriptor; // the stream's own
    Access access;
    std::fstream stream;
};

} // namespace orv::utilities

#pragma once

#include "Export.h"
#include "Utilities/FileState.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>

namespace orv::utilities {

class OwnedFile;

/// A hold on a file against other processes, with a stream on that file. It lasts as long as the object.
///
/// The lock is an advisory flock(2) on the file itself, so flock(1) and other programs can take part. It falls when the
/// object or the process ends, however it ends, and isn't passed on to programs that the process starts.
///
/// What is written to the stream goes over the old content from its start, and at the end of the hold the file is cut
/// to what was written. If nothing was written, or not all of it could be, the file isn't cut. A document that must not
/// be lost is better given to replaceContent.
class ORV_EXPORT FileLock {
public:
    /// What the hold is for. The stream of ReadWrite takes output only: the file is cut at its position, which reading
    /// would move. Don't seek in it either.
    enum class Access { Read = 0, ReadWrite = 1 };

    /// Locks an existing file, against everyone if exclusive is true, otherwise beside other holders that ask
    /// for no more. Makes one attempt and doesn't wait. Gives null if the file is missing, can't be opened
    /// for that access (a directory can't), is locked by another holder, in this process or in another, or is
    /// replaced by another one before the lock is had.
    static std::unique_ptr<FileLock> tryLock(const std::filesystem::path& path, bool exclusive, Access access);

    /// Makes the file if it is missing, in a directory that exists, and locks it exclusively for writing its
    /// first content. Gives null if that fails, or if the file isn't empty once it is locked: then another
    /// process was quicker, and its content stays.
    static std::unique_ptr<FileLock> tryLockNew(const std::filesystem::path& path);

    /// Flushes the stream, cuts the file and lets go of it, for child processes that have it open as well. A failure
    /// leaves no other trace than the file.
    ~FileLock();

    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// The stream on the file, binary, good and at its start when the lock was taken.
    std::fstream& getStream() { return stream; }

    /// The state of the file when it was locked.
    const FileState& getState() const { return state; }

    /// Whether the file holds that content now, byte for byte. False as well if it can't be read.
    bool holds(std::string_view content) const;

    /// Makes sure that a copy of the present content is kept, in a file NAME.kept-UTCTIME beside the path by which the
    /// file was locked. The time is to the microsecond, as in notes.xml.kept-20261122T184501.250000Z, and no file has
    /// such a name before it is whole and synced. The same content isn't kept twice. Gives false, with no part of a
    /// copy left behind, if the copy can't be made and synced or the directory can't be read.
    bool keepCopy(const std::filesystem::path& path) const;

    /// Replaces the file's content. Requires ReadWrite, at most one call per lock, and no output through the stream.
    /// The format must ignore line feeds at the end: they pad a file whose process is killed. Space is reserved before
    /// the first old byte is overwritten, so a full disk leaves the old content; a process killed between two system
    /// calls leaves the old or the new content whole. Gives false if the file doesn't hold all of the content; then the
    /// old content stands as far as it wasn't overwritten.
    bool replaceContent(std::string_view content) const;

    /// Sets the file's modification time to the present microsecond and gives the state of the file: whoever writes to
    /// it from now on makes another state of it. Nothing if that can't be had for sure, since the file belongs to
    /// another user or the file system keeps the time less exactly.
    std::optional<FileState> seal() const;

private:
    FileLock(int opened, const FileState& found, Access openedFor);

    static std::unique_ptr<FileLock> adopt(OwnedFile& file, const FileState& found, Access access);

    int descriptor; // the stream's own
    FileState state;
    Access access;
    std::fstream stream;
};

} // namespace orv::utilities

#pragma once

#include "OrvExport.h"
#include "Utilities/Change.h"
#include "Utilities/Descriptor.h"
#include "Utilities/FileState.h"
#include "Utilities/SavingNote.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace orv::utilities {

/// A lock on a file against other processes, for documents that must not be lost. It lasts as long as the object.
///
/// The lock is an advisory one on the file itself. It falls when the object or the process ends, however it ends, and
/// isn't passed on to programs that the process starts.
class ORV_UTILITIES_EXPORT LockedFile {
public:
    enum class Access { Read = 0, ReadWrite = 1 };

    /// Locks an existing file, against everyone if exclusive is true, otherwise shared with others that share it. Makes
    /// one attempt and doesn't wait. For ReadWrite, what a program left undone that ended within a write is put right
    /// first; a series of this process's own that isn't at its end may be given.
    ///
    /// Returns null, and why in error, if the file is missing, can't be opened for that access (a directory can't), is
    /// locked by another holder, in this process or in another (resource_unavailable_try_again), is replaced by another
    /// one before the lock is acquired (the same), or can't be put right.
    static std::unique_ptr<LockedFile> tryLock(const std::filesystem::path& path, bool exclusive, Access access,
                                               std::error_code& error, const SavingNote* series = nullptr);

    /// Makes the file if it is missing, in a directory that exists, and locks it exclusively for writing its first
    /// content; its name is on the disk then. Returns null if that fails, or if the file isn't empty once it is locked:
    /// then another process was quicker, and its content stays.
    static std::unique_ptr<LockedFile> tryLockNew(const std::filesystem::path& path, std::error_code& error);

    /// Unlocks explicitly, since a forked child may still have the file open.
    ~LockedFile();

    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    /// The state of the file when it was locked or, if it was written since, as that left it: whoever writes to the
    /// file from then on makes another state of it. Nothing if that can't be had for sure, since the file belongs to
    /// another user or the file system keeps its times less exactly.
    const std::optional<FileState>& getState() const { return state; }

    /// The path of the file, links resolved.
    const std::filesystem::path& getPath() const { return path; }

    /// The present content; nothing if it can't be read.
    std::optional<std::string> read() const { return file.read(); }

    /// Makes sure that a copy of the content, which the file holds or held, is kept in a file NAME.kept-UTCTIME beside
    /// it; see KeptCopy.h. Returns false, with no part of a copy left behind, if that can't be done.
    bool keep(std::string_view content) const;

    /// Replaces the content that the file holds. Requires ReadWrite. Only what the change says is written, and the
    /// file's modification time. The format must ignore line feeds at the end, which may stand there if the process is
    /// killed. If somebody wrote the file in spite of the lock, a copy of that is kept.
    ///
    /// Returns true once the file holds the new content, on the disk; then it does whatever happens to the program or
    /// the machine. Whatever happens before leaves all of the old one, once the next holder has locked it or
    /// readDocument has read it. Returns false if it couldn't be done (a full disk, a failing one), with the old
    /// content in the file or, if not even that could be done, for the next holder. Where the directory takes no new
    /// file there is no saving note, and an end in the middle may leave parts of both.
    bool replace(const Replacement& replacement);

    /// The same as one of a series of changes that add nothing: an end in the middle of the series leaves what was
    /// there before all of it. Nothing is on the disk for sure before endSeries. If the note doesn't stand, it is made
    /// of the content that the operation returns, which the file must hold.
    bool replaceInSeries(const std::function<std::string()>& getContent, const Replacement& replacement,
                         SavingNote& series);

    /// Ends the series, if it stands: what the file holds is on the disk when this returns.
    void endSeries(SavingNote& series) const;

    /// For what has no operation here.
    const Descriptor& getDescriptor() const { return file; }

private:
    LockedFile(Descriptor opened, std::filesystem::path resolvedPath, const FileState& found)
        : file(std::move(opened)), path(std::move(resolvedPath)), state(found) {}

    /// Opens and locks the file. If the opening refuses links and the path ends in one, what it leads to is opened.
    static std::unique_ptr<LockedFile> lock(const std::filesystem::path& path, Opening opening, bool exclusive,
                                            std::error_code& error);
    /// Whether somebody may have written the file since its state was known. True as well if it isn't known.
    bool mayBeWrittenByOthers() const { return file.getState() != state; }
    bool rewrite(const Replacement& replacement);
    bool replaceFound(const Replacement& replacement);
    bool write(const Replacement& replacement);
    std::errc putBack(const Replacement& replacement) const;
    void seal();

    Descriptor file;
    std::filesystem::path path;
    std::optional<FileState> state;
};

} // namespace orv::utilities

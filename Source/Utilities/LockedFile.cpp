#include "Utilities/LockedFile.h"

#include "Utilities/Beside.h"
#include "Utilities/Digest.h"
#include "Utilities/KeptCopy.h"
#include "Utilities/NoteContent.h"

#include <chrono>

namespace orv::utilities {

std::unique_ptr<LockedFile> LockedFile::lock(const std::filesystem::path& path, Opening opening, bool exclusive,
                                             std::error_code& error) {
    auto documentPath = path;
    std::errc outcome{};
    Descriptor file = Descriptor::open(documentPath, opening, outcome);
    if (outcome == std::errc::too_many_symbolic_link_levels) {
        documentPath = resolved(path);
        file = Descriptor::open(documentPath, opening, outcome);
    }
    if (file.isOpen()) {
        outcome = file.lock(exclusive);
    }
    if (outcome != done) {
        error = std::make_error_code(outcome);
        return nullptr;
    }
    // The state counts only once nobody else can write. Whoever had the lock before may have removed the file, or put
    // another one in its place: what is written to this one then is lost.
    const auto found = file.getState();
    const auto named = FileState::of(documentPath);
    if (!found || !named || found->identity != named->identity) {
        error = std::make_error_code(found ? std::errc::resource_unavailable_try_again : std::errc::not_supported);
        return nullptr;
    }
    error.clear();
    return std::unique_ptr<LockedFile>(new LockedFile(std::move(file), std::move(documentPath), *found));
}

std::unique_ptr<LockedFile> LockedFile::tryLock(const std::filesystem::path& path, bool exclusive, Access access,
                                                std::error_code& error, const SavingNote* series) {
    const bool isForWriting = access == Access::ReadWrite;
    auto locked = lock(path, isForWriting ? Opening::WriteNoLink : Opening::ReadNoLink, exclusive, error);
    if (!locked || !isForWriting) {
        return locked;
    }
    const auto [outcome, wasNeeded] = SavingNote::settle(locked->file, locked->path, series);
    if (outcome != done) {
        error = std::make_error_code(outcome);
        return nullptr;
    }
    if (wasNeeded) {
        locked->state = locked->file.getState();
    }
    return locked;
}

std::unique_ptr<LockedFile> LockedFile::tryLockNew(const std::filesystem::path& path, std::error_code& error) {
    auto locked = lock(resolved(path), Opening::Make, true, error);
    if (!locked) {
        return nullptr;
    }
    std::errc outcome = std::errc::file_exists;
    if (locked->state->size == 0) {
        outcome = SavingNote::beginDocument(locked->path);
    }
    if (outcome != done) {
        error = std::make_error_code(outcome);
        return nullptr;
    }
    return locked;
}

LockedFile::~LockedFile() {
    file.unlock();
}

bool LockedFile::keep(std::string_view content) const {
    return keepCopy(file, path, content);
}

bool LockedFile::replace(const Replacement& replacement) {
    return mayBeWrittenByOthers() ? replaceFound(replacement) : rewrite(replacement);
}

bool LockedFile::rewrite(const Replacement& replacement) {
    if (replacement.change.isNone()) {
        return true;
    }
    SavingNote note;
    if (SavingNote::make(file, path, NoteContent::ofChange(replacement), note) != done) {
        return false;
    }
    const bool isDone = write(replacement) && file.sync() == done;
    if (isDone || (putBack(replacement) == done && file.sync() == done)) {
        note.end();
    } else {
        note.leave(); // the next holder puts the document right
    }
    return isDone;
}

bool LockedFile::replaceInSeries(const std::function<std::string()>& getContent, const Replacement& replacement,
                                 SavingNote& series) {
    if (mayBeWrittenByOthers()) {
        return replaceFound(replacement);
    }
    if (replacement.change.isNone()) {
        return true;
    }
    if (!series.standsBeside(path) &&
        SavingNote::make(file, path, NoteContent::ofSeries(getContent(), replacement.digestBefore), series) != done) {
        return false;
    }
    series.announce(replacement.digestAfter);
    const bool isDone = write(replacement);
    if (!isDone && putBack(replacement) != done) {
        series.leave();
    }
    return isDone;
}

/// Replaces what the file holds now, which somebody may have written in spite of the lock; a copy of that is kept then.
bool LockedFile::replaceFound(const Replacement& replacement) {
    const auto found = file.read();
    state = file.getState();
    if (!found || !state) {
        return false;
    }
    const Digest digest = Digest::of(*found);
    return (digest == replacement.digestBefore || keep(*found)) &&
           rewrite({Change::between(*found, replacement.content), found->size(), digest, replacement.content,
                    replacement.digestAfter});
}

void LockedFile::endSeries(SavingNote& series) const {
    if (series.standsBeside(path) && file.sync() == done) {
        series.end();
    } else {
        series.leave();
    }
}

bool LockedFile::write(const Replacement& replacement) {
    const Change& change = replacement.change;
    const std::uint64_t size = replacement.sizeBefore;
    const std::uint64_t sizeAfter = replacement.content.size();
    state.reset();
    std::errc outcome = done;
    if (sizeAfter < size) {
        // With the rest of the old content overwritten as well, a process killed before the cut has torn nothing.
        std::string padded(change.after);
        padded.resize(change.before.size(), reservedByte);
        outcome = file.write(padded, change.position);
        if (outcome == done) {
            outcome = file.setSize(sizeAfter);
        }
    } else {
        // An empty file has nothing to lose.
        const std::string reserve(size == 0 ? 0 : sizeAfter - size, reservedByte);
        outcome = file.write(reserve, size);
        if (outcome == done) {
            outcome = file.write(change.after, change.position);
        }
    }
    if (outcome == done) {
        seal();
    }
    return outcome == done;
}

std::errc LockedFile::putBack(const Replacement& replacement) const {
    const std::errc outcome = file.write(replacement.change.before, replacement.change.position);
    return outcome == done ? file.setSize(replacement.sizeBefore) : outcome;
}

void LockedFile::seal() {
    // Whole microseconds: nearly every file system keeps those exactly, and its own clock, which goes in steps of
    // milliseconds, hardly ever shows one.
    using std::chrono::microseconds;
    const auto now = std::chrono::floor<microseconds>(std::chrono::system_clock::now().time_since_epoch());
    const std::int64_t time = std::chrono::nanoseconds(now).count();
    if (file.setModificationTime(time) == done) {
        const auto sealed = file.getState();
        if (sealed && sealed->modificationTime == time) {
            state = sealed;
        }
    }
}

} // namespace orv::utilities

#include "Utilities/FileLock.h"

#include "Utilities/KeptCopy.h"
#include "Utilities/OpenFile.h"

#include <chrono>
#include <cstdint>
#include <ext/stdio_filebuf.h>
#include <fcntl.h>
#include <string>
#include <utility>

namespace orv::utilities {

namespace {

/// Locks the file, that was opened by the path, and gives its state; nothing if that fails.
std::optional<FileState> lock(const OwnedFile& file, const std::filesystem::path& path, bool exclusive) {
    if (!file.isOpen() || !file.lock(exclusive)) {
        return std::nullopt;
    }
    // The state counts only once nobody else can write. Whoever had the lock before may have removed the file, or put
    // another one in its place: what is written to this one then is lost.
    const auto found = file.getState();
    const auto named = FileState::of(path);
    return found && named && found->identity == named->identity ? found : std::nullopt;
}

} // namespace

std::unique_ptr<FileLock> FileLock::tryLock(const std::filesystem::path& path, bool exclusive, Access access) {
    OwnedFile file(path, access == Access::ReadWrite ? O_RDWR : O_RDONLY);
    const auto found = lock(file, path, exclusive);
    return found ? adopt(file, *found, access) : nullptr;
}

std::unique_ptr<FileLock> FileLock::tryLockNew(const std::filesystem::path& path) {
    OwnedFile file(path, O_RDWR | O_CREAT);
    const auto found = lock(file, path, true);
    return found && found->size == 0 ? adopt(file, *found, Access::ReadWrite) : nullptr;
}

std::unique_ptr<FileLock> FileLock::adopt(OwnedFile& file, const FileState& found, Access access) {
    const auto direction = access == Access::ReadWrite ? std::ios_base::out : std::ios_base::in;
    std::unique_ptr<FileLock> lock(new FileLock(file.get(), found, access));
    // The standard has no way from a descriptor to a stream. A buffer that fails to open leaves the
    // descriptor to its caller.
    __gnu_cxx::stdio_filebuf<char> buffer(file.get(), direction | std::ios_base::binary);
    if (!buffer.is_open()) {
        return nullptr;
    }
    file.release();
    *lock->stream.rdbuf() = std::move(buffer);
    return lock;
}

FileLock::FileLock(int opened, const FileState& found, Access openedFor)
    : descriptor(opened), state(found), access(openedFor) {}

FileLock::~FileLock() {
    const OpenFile file(descriptor);
    if (access == Access::ReadWrite) {
        // A full disk shows only at the flush. Then the tail of the old content is all that is left of it, and stays.
        stream.flush();
        const std::streamoff written = stream.tellp();
        if (stream.good() && written > 0) {
            file.truncate(static_cast<std::uint64_t>(written));
        }
    }
    // The close alone would leave the lock to a child process that was forked meanwhile.
    file.unlock();
}

bool FileLock::holds(std::string_view content) const {
    if (state.size != content.size()) {
        return false;
    }
    std::string present(content.size(), '\0');
    return OpenFile(descriptor).read(present.data(), present.size(), 0) == content.size() && present == content;
}

bool FileLock::keepCopy(const std::filesystem::path& path) const {
    return utilities::keepCopy(OpenFile(descriptor), path);
}

bool FileLock::replaceContent(std::string_view content) const {
    const OpenFile file(descriptor);
    bool isWritten = false;
    if (content.size() < state.size) {
        // With the rest of the old content overwritten as well, a process killed before the cut has torn nothing.
        std::string padded(content);
        padded.resize(state.size, '\n');
        isWritten = file.write(padded, 0);
    } else {
        // An empty file has nothing to lose.
        const std::string reserve(state.size == 0 ? 0 : content.size() - state.size, '\n');
        isWritten = file.write(reserve, state.size) && file.write(content, 0);
    }
    // Cut in any case: others don't always keep to the lock.
    return file.truncate(isWritten ? content.size() : state.size) && isWritten;
}

std::optional<FileState> FileLock::seal() const {
    // File systems' own clocks go in steps of milliseconds, and none keeps the time in steps that microseconds don't
    // fit.
    using std::chrono::microseconds;
    const auto now = std::chrono::floor<microseconds>(std::chrono::system_clock::now().time_since_epoch());
    const std::int64_t time = std::chrono::nanoseconds(now).count();
    const OpenFile file(descriptor);
    const auto sealed = file.setModificationTime(time) ? file.getState() : std::nullopt;
    return sealed && sealed->modificationTime == time ? sealed : std::nullopt;
}

} // namespace orv::utilities

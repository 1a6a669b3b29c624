#include "Utilities/FileLock.h"

#include "Utilities/LockedFile.h"

#include <utility>

namespace orv::utilities {

std::unique_ptr<FileLock> FileLock::tryLock(const std::filesystem::path& path, bool exclusive, Access access) {
    std::error_code ignored;
    return tryLock(path, exclusive, access, ignored);
}

std::unique_ptr<FileLock> FileLock::tryLock(const std::filesystem::path& path, bool exclusive, Access access,
                                            std::error_code& error) {
    const bool isForWriting = access == Access::ReadWrite;
    auto file = LockedFile::tryLock(path, exclusive,
                                    isForWriting ? LockedFile::Access::ReadWrite : LockedFile::Access::Read, error);
    if (!file) {
        return nullptr;
    }
    std::unique_ptr<FileLock> lock(new FileLock(std::move(file), access));
    const auto direction = isForWriting ? std::ios_base::out : std::ios_base::in;
    const Handle handle = lock->file->getDescriptor().get();
    const std::errc outcome = uninterrupted([&] { return systemCalls.openStream(handle, direction, lock->stream); });
    if (outcome != done) {
        error = std::make_error_code(outcome);
        return nullptr;
    }
    return lock;
}

FileLock::FileLock(std::unique_ptr<LockedFile> locked, Access openedFor) : file(std::move(locked)), access(openedFor) {}

FileLock::~FileLock() {
    if (access == Access::ReadWrite) {
        // A full disk shows only at the flush. Then the tail of the old content is all that is left of it, and stays.
        stream.flush();
        const std::streamoff written = stream.tellp();
        if (stream.good() && written > 0) {
            file->getDescriptor().setSize(static_cast<std::uint64_t>(written));
        }
    }
    stream.close(); // while the lock is held
}

} // namespace orv::utilities

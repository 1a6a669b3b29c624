#include "Utilities/OpenFile.h"

#include "Utilities/SystemCalls.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orv::utilities {

namespace {

/// Repeats a system call for as long as signals interrupt it.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return time.tv_sec * nanosecondsPerSecond + time.tv_nsec;
}

std::optional<FileState> stateFrom(const struct stat& status) {
    if (!S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileState{{status.st_dev, status.st_ino},
                     static_cast<std::uint64_t>(status.st_size),
                     nanoseconds(status.st_mtim),
                     nanoseconds(status.st_ctim)};
}

} // namespace

std::optional<FileState> FileState::of(const std::filesystem::path& path) {
    struct stat status {};
    return systemCalls.stat(path.c_str(), &status) == 0 ? stateFrom(status) : std::nullopt;
}

std::optional<FileState> OpenFile::getState() const {
    struct stat status {};
    return systemCalls.fstat(descriptor, &status) == 0 ? stateFrom(status) : std::nullopt;
}

bool OpenFile::lock(bool exclusive) const {
    const int operation = (exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB;
    return uninterrupted([&] { return systemCalls.flock(descriptor, operation); }) == 0;
}

void OpenFile::unlock() const {
    uninterrupted([&] { return systemCalls.flock(descriptor, LOCK_UN); });
}

std::optional<std::size_t> OpenFile::read(char* buffer, std::size_t size, std::uint64_t position) const {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got = uninterrupted([&] {
            return systemCalls.pread(descriptor, buffer + done, size - done, static_cast<off_t>(position + done));
        });
        if (got < 0) {
            return std::nullopt;
        }
        if (got == 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool OpenFile::write(std::string_view content, std::uint64_t position) const {
    while (!content.empty()) {
        const ssize_t written = uninterrupted([&] {
            return systemCalls.pwrite(descriptor, content.data(), content.size(), static_cast<off_t>(position));
        });
        if (written <= 0) {
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
        position += static_cast<std::uint64_t>(written);
    }
    return true;
}

bool OpenFile::truncate(std::uint64_t size) const {
    return uninterrupted([&] { return systemCalls.ftruncate(descriptor, static_cast<off_t>(size)); }) == 0;
}

bool OpenFile::sync() const {
    return uninterrupted([&] { return systemCalls.fsync(descriptor); }) == 0;
}

bool OpenFile::setModificationTime(std::int64_t time) const {
    const timespec times[] = {{0, UTIME_OMIT}, {time / nanosecondsPerSecond, time % nanosecondsPerSecond}};
    return uninterrupted([&] { return systemCalls.futimens(descriptor, times); }) == 0;
}

OwnedFile::OwnedFile(const std::filesystem::path& path, int flags, unsigned permissions)
    // Without O_NONBLOCK the opening of a pipe would wait for its other end.
    : OpenFile(
          uninterrupted([&] { return systemCalls.open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, permissions); })) {}

OwnedFile::~OwnedFile() {
    if (isOpen() && !isReleased) {
        ::close(get());
    }
}

} // namespace orv::utilities

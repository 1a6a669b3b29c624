#include "Utilities/SystemCalls.h"

#include "Utilities/DirectoryNames.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ext/stdio_filebuf.h>
#include <fcntl.h>
#include <limits>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orv::utilities {

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
constexpr int firstOrdinaryDescriptor = 3;

int number(Handle file) {
    return static_cast<int>(file);
}

/// The outcome of a call whose result is -1 if it failed.
std::errc outcome(std::intmax_t result) {
    return result == -1 ? static_cast<std::errc>(errno) : done;
}

int flagsOf(Opening opening) {
    switch (opening) {
    case Opening::Read:
        return O_RDONLY;
    case Opening::ReadNoLink:
        return O_RDONLY | O_NOFOLLOW;
    case Opening::Write:
        return O_RDWR;
    case Opening::WriteNoLink:
        return O_RDWR | O_NOFOLLOW;
    case Opening::Make:
        return O_RDWR | O_CREAT;
    case Opening::MakeNew:
        return O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW;
    case Opening::Directory:
        return O_RDONLY | O_DIRECTORY;
    }
    return O_RDONLY;
}

std::errc openFile(const fs::path& path, Opening opening, Handle& opened) {
    const mode_t permissions = opening == Opening::MakeNew ? 0600 : 0666;
    // Without O_NONBLOCK the opening of a pipe would wait for its other end.
    int descriptor = ::open(path.c_str(), flagsOf(opening) | O_CLOEXEC | O_NONBLOCK, permissions);
    if (descriptor >= 0 && descriptor < firstOrdinaryDescriptor) {
        // What the program prints would go into the file.
        const int ordinary = ::fcntl(descriptor, F_DUPFD_CLOEXEC, firstOrdinaryDescriptor);
        const int reason = errno;
        ::close(std::exchange(descriptor, ordinary));
        errno = reason;
    }
    opened = static_cast<Handle>(descriptor);
    return outcome(descriptor);
}

void closeFile(Handle file) {
    ::close(number(file));
}

std::errc openStream(Handle file, std::ios_base::openmode direction, std::fstream& stream) {
    const int descriptor = ::fcntl(number(file), F_DUPFD_CLOEXEC, firstOrdinaryDescriptor);
    if (descriptor == -1) {
        return outcome(-1);
    }
    // The standard has no way from a descriptor to a stream.
    __gnu_cxx::stdio_filebuf<char> buffer(descriptor, direction | std::ios_base::binary);
    if (!buffer.is_open()) {
        ::close(descriptor);
        return std::errc::not_enough_memory;
    }
    *stream.rdbuf() = std::move(buffer);
    return done;
}

std::errc lock(Handle file, bool exclusive) {
    return outcome(::flock(number(file), (exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB));
}

std::errc unlock(Handle file) {
    return outcome(::flock(number(file), LOCK_UN));
}

/// Of a time that takes more than 64 bits then, the nearest one.
std::int64_t nanoseconds(const timespec& time) {
    constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max() / nanosecondsPerSecond - 1;
    return std::clamp<std::int64_t>(time.tv_sec, -limit, limit) * nanosecondsPerSecond + time.tv_nsec;
}

std::errc takeState(int result, const struct stat& status, FileState& state) {
    if (result == -1) {
        return outcome(-1);
    }
    if (!S_ISREG(status.st_mode)) {
        return S_ISDIR(status.st_mode) ? std::errc::is_a_directory : std::errc::not_supported;
    }
    state = {{status.st_dev, {status.st_ino, 0}},
             static_cast<std::uint64_t>(status.st_size),
             nanoseconds(status.st_mtim),
             nanoseconds(status.st_ctim)};
    return done;
}

std::errc getState(Handle file, FileState& state) {
    struct stat status {};
    return takeState(::fstat(number(file), &status), status, state);
}

std::errc getStateOf(const fs::path& path, FileState& state) {
    struct stat status {};
    return takeState(::stat(path.c_str(), &status), status, state);
}

std::errc readAt(Handle file, char* buffer, std::size_t size, std::uint64_t position, std::size_t& read) {
    const ssize_t result = ::pread(number(file), buffer, size, static_cast<off_t>(position));
    read = result > 0 ? static_cast<std::size_t>(result) : 0;
    return outcome(result);
}

std::errc writeAt(Handle file, std::string_view content, std::uint64_t position, std::size_t& written) {
    const ssize_t result = ::pwrite(number(file), content.data(), content.size(), static_cast<off_t>(position));
    written = result > 0 ? static_cast<std::size_t>(result) : 0;
    return outcome(result);
}

std::errc setSize(Handle file, std::uint64_t size) {
    return outcome(::ftruncate(number(file), static_cast<off_t>(size)));
}

std::errc setModificationTime(Handle file, std::int64_t time) {
    const timespec times[] = {{0, UTIME_OMIT}, {time / nanosecondsPerSecond, time % nanosecondsPerSecond}};
    return outcome(::futimens(number(file), times));
}

std::errc takeAccess(Handle file, Handle model) {
    struct stat wanted {};
    struct stat present {};
    if (::fstat(number(model), &wanted) == -1 || ::fstat(number(file), &present) == -1) {
        return outcome(-1);
    }
    if (present.st_uid != wanted.st_uid) {
        // Only a privileged process may; what remains then is the group's.
        static_cast<void>(::fchown(number(file), wanted.st_uid, static_cast<gid_t>(-1)) == 0);
    }
    mode_t permissions = wanted.st_mode & ACCESSPERMS;
    if (present.st_gid != wanted.st_gid && ::fchown(number(file), static_cast<uid_t>(-1), wanted.st_gid) == -1) {
        // To the file the model's group is among the others, and the file's own group may read no more than they do.
        const mode_t others = permissions & (permissions >> 3U) & S_IRWXO;
        permissions = (permissions & S_IRWXU) | (others << 3U) | others;
    }
    return outcome(::fchmod(number(file), permissions));
}

std::errc sync(Handle file) {
    const std::errc result = outcome(::fsync(number(file)));
    // Some file systems have nothing to sync of a directory.
    return result == std::errc::invalid_argument ? done : result;
}

std::errc renamePath(const fs::path& from, const fs::path& to) {
    return outcome(std::rename(from.c_str(), to.c_str()));
}

std::errc removePath(const fs::path& path) {
    return outcome(::unlink(path.c_str()));
}

std::errc makeDirectory(const fs::path& path) {
    return outcome(::mkdir(path.c_str(), ACCESSPERMS));
}

std::errc readLink(const fs::path& link, fs::path& target) {
    std::string room(4096, '\0');
    const ssize_t length = ::readlink(link.c_str(), room.data(), room.size());
    if (length == -1) {
        return outcome(-1);
    }
    room.resize(static_cast<std::size_t>(length));
    target = std::move(room);
    return done;
}

} // namespace

SystemCalls systemCalls = {
    openFile, closeFile,           openStream, lock, unlock,     getState,   getStateOf,    readAt,   writeAt,
    setSize,  setModificationTime, takeAccess, sync, renamePath, removePath, makeDirectory, readLink, listNames};

} // namespace orv::utilities

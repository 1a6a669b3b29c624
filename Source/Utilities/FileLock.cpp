#include "Utilities/FileLock.h"

#include <cerrno>
#include <ext/stdio_filebuf.h>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orv::utilities {

namespace {

/// Repeats a system call for as long as signals interrupt it.
template <typename Call>
int uninterrupted(Call call) {
    int result = 0;
    do {
        result = call();
    } while (result == -1 && errno == EINTR);
    return result;
}

} // namespace

/// An open file that is closed again unless it is released.
class FileLock::Descriptor {
public:
    explicit Descriptor(int opened) : number(opened) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number != -1) {
            ::close(number);
        }
    }

    int get() const { return number; }
    void release() { number = -1; }

    /// The size of the file, or nothing if none is open or it is no regular file.
    std::optional<off_t> sizeOfRegularFile() const {
        struct stat status {};
        if (number == -1 || ::fstat(number, &status) != 0 || !S_ISREG(status.st_mode)) {
            return std::nullopt;
        }
        return status.st_size;
    }

    bool lock(bool exclusive) const {
        const int operation = (exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB;
        return uninterrupted([&] { return ::flock(number, operation); }) == 0;
    }

private:
    int number;
};

namespace {

int openFile(const std::filesystem::path& path, int flags) {
    // Without O_NONBLOCK the opening of a pipe would wait for its other end.
    constexpr mode_t permissions = 0666;
    return uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, permissions); });
}

} // namespace

std::unique_ptr<FileLock> FileLock::tryLock(const std::filesystem::path& path, bool exclusive, Access access) {
    Descriptor file(openFile(path, access == Access::ReadWrite ? O_RDWR : O_RDONLY));
    if (!file.sizeOfRegularFile() || !file.lock(exclusive)) {
        return nullptr;
    }
    return hold(file, access);
}

std::unique_ptr<FileLock> FileLock::tryLockNew(const std::filesystem::path& path) {
    Descriptor file(openFile(path, O_RDWR | O_CREAT));
    // The size counts only once nobody else can write.
    if (!file.sizeOfRegularFile() || !file.lock(true) || file.sizeOfRegularFile() != 0) {
        return nullptr;
    }
    return hold(file, Access::ReadWrite);
}

std::unique_ptr<FileLock> FileLock::hold(Descriptor& file, Access access) {
    const auto direction = access == Access::ReadWrite ? std::ios_base::out : std::ios_base::in;
    std::unique_ptr<FileLock> lock(new FileLock(file.get(), access));
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

FileLock::FileLock(int opened, Access openedFor) : descriptor(opened), access(openedFor) {}

FileLock::~FileLock() {
    if (access != Access::ReadWrite) {
        return;
    }
    // A full disk shows only at the flush. Then the tail of the old content is all that is left of it, and stays.
    stream.flush();
    const std::streamoff written = stream.tellp();
    if (stream.good() && written > 0) {
        uninterrupted([&] { return ::ftruncate(descriptor, written); });
    }
}

} // namespace orv::utilities

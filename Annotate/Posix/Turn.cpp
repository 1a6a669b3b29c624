#include "Annotate/Turn.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace annotate {

namespace {

/// A descriptor of the folder, or of the nearest one above it that exists; -1 if that can't be opened.
int openNearest(std::filesystem::path folder) {
    int opened = -1;
    while ((opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) == -1 &&
           (errno == ENOENT || errno == ENOTDIR) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    return opened;
}

} // namespace

bool Turn::await(const std::filesystem::path& folder, std::chrono::milliseconds patience) {
    constexpr std::chrono::milliseconds step(10);
    const int descriptor = openNearest(folder);
    held = descriptor;
    for (; descriptor != -1 && ::flock(descriptor, LOCK_EX | LOCK_NB) != 0; patience -= step) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return true;
        }
        if (patience <= step) {
            return false;
        }
        std::this_thread::sleep_for(step);
    }
    return true;
}

void Turn::end() const {
    if (held != -1) {
        ::close(static_cast<int>(held));
    }
}

} // namespace annotate

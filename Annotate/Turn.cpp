#include "Annotate/Turn.h"

#include "Annotate/StoreError.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace annotate {

namespace {

/// Where the store's file is, links followed, so that all who mean the same file come to the same place.
std::filesystem::path folderOf(const std::filesystem::path& store) {
    std::error_code error;
    const std::filesystem::path absolute =
        std::filesystem::absolute(store, error); // a missing file stays relative else
    const std::filesystem::path file = std::filesystem::weakly_canonical(absolute, error);
    return (error ? absolute : file).parent_path();
}

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

Turn::Turn(const std::filesystem::path& store) : folder(openNearest(folderOf(store))) {
    for (int remaining = 6000; folder != -1 && ::flock(folder, LOCK_EX | LOCK_NB) != 0; --remaining) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return;
        }
        if (remaining == 0) {
            ::close(folder);
            throw StoreError("Another annotate has been at work in the folder of " + store.string() +
                             " for a minute. Try again later.");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

Turn::~Turn() {
    if (folder != -1) {
        ::close(folder);
    }
}

} // namespace annotate

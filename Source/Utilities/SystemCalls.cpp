#include "Utilities/SystemCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orv::utilities {

namespace {

int openFile(const char* path, int flags, mode_t permissions) {
    return ::open(path, flags, permissions);
}

} // namespace

SystemCalls systemCalls = {openFile, ::flock,     ::stat,     ::fstat, ::pread,
                           ::pwrite, ::ftruncate, ::futimens, ::fsync, ::rename};

} // namespace orv::utilities

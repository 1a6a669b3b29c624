#pragma once

#include "Export.h"

#include <sys/stat.h>
#include <sys/types.h>

namespace orv::utilities {

/// The calls of the operating system through which users' files are opened, locked, written and copied, with the
/// results that POSIX gives them. Replaceable for tests alone, before any file is opened; not thread-safe. All others
/// (close, the reading of directories, removal) are called directly.
struct SystemCalls {
    int (*open)(const char* path, int flags, mode_t permissions);
    int (*flock)(int descriptor, int operation);
    int (*stat)(const char* path, struct stat* status);
    int (*fstat)(int descriptor, struct stat* status);
    ssize_t (*pread)(int descriptor, void* buffer, size_t size, off_t position);
    ssize_t (*pwrite)(int descriptor, const void* content, size_t size, off_t position);
    int (*ftruncate)(int descriptor, off_t size);
    int (*futimens)(int descriptor, const timespec* accessAndModification);
    int (*fsync)(int descriptor);
    int (*rename)(const char* from, const char* to);
};

ORV_EXPORT extern SystemCalls systemCalls;

} // namespace orv::utilities

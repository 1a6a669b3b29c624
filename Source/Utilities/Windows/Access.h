#pragma once

#include "Utilities/SystemCalls.h"

#include <system_error>
#include <windows.h>

namespace orv::utilities {

/// The reason that the last call of the system failed for.
std::errc lastError();

/// The outcome of a call whose result is FALSE if it failed.
inline std::errc outcome(BOOL result) {
    return result == FALSE ? lastError() : done;
}

/// The permissions of a file that its owner alone may read, for the making of one.
class OwnerOnly {
public:
    OwnerOnly();
    OwnerOnly(const OwnerOnly&) = delete;
    OwnerOnly& operator=(const OwnerOnly&) = delete;
    ~OwnerOnly();

    /// Null if they can't be had.
    SECURITY_ATTRIBUTES* get() { return attributes.lpSecurityDescriptor == nullptr ? nullptr : &attributes; }

private:
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

/// Gives the file the model's permissions, those that it has from its folder as such.
std::errc takePermissions(HANDLE file, HANDLE model);

} // namespace orv::utilities

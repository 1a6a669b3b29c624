#pragma once

#include <filesystem>
#include <windows.h>

namespace orv::utilities {

/// Others may do with an open file what they may elsewhere: read and write it, rename and remove it.
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// A file or directory that is opened by its path, perhaps in vain, and closed at the end.
class OpenHandle {
public:
    OpenHandle(const std::filesystem::path& path, DWORD access, DWORD special)
        : handle(::CreateFileW(path.c_str(), access, shareAll, nullptr, OPEN_EXISTING, special, nullptr)) {}
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;
    ~OpenHandle() {
        if (isOpen()) {
            ::CloseHandle(handle);
        }
    }

    bool isOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle; }

private:
    HANDLE handle;
};

} // namespace orv::utilities

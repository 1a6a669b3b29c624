#include "Utilities/Windows/PathCalls.h"

#include "Utilities/Windows/Access.h"
#include "Utilities/Windows/OpenHandle.h"

#include <string>
#include <string_view>
#include <utility>

namespace orv::utilities {

namespace {

namespace fs = std::filesystem;

/// The path as people write it, if the system takes it for the same: names may end in a dot or a blank otherwise.
fs::path asWritten(const fs::path& path) {
    constexpr std::wstring_view plain = L"\\\\?\\";
    constexpr std::wstring_view shared = L"\\\\?\\UNC\\";
    std::wstring written = path.native();
    if (written.starts_with(shared)) {
        written.replace(0, shared.size(), L"\\\\");
    } else if (written.starts_with(plain)) {
        written.erase(0, plain.size());
    }
    std::wstring taken(written.size() + 1, L'\0');
    taken.resize(::GetFullPathNameW(written.c_str(), static_cast<DWORD>(taken.size()), taken.data(), nullptr));
    return taken == written ? fs::path(written) : path;
}

/// The system's FileDispositionInfoEx, which headers of MinGW hide.
constexpr auto dispositionEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

/// Repeats the call for up to 100 ms while others have the file open and share it with nobody, as scanners do for a
/// moment.
template <typename Call>
std::errc patiently(Call call) {
    constexpr DWORD milliseconds = 5;
    for (int remaining = 20;; --remaining) {
        if (call() != FALSE) {
            return done;
        }
        if (::GetLastError() != ERROR_SHARING_VIOLATION || remaining == 0) {
            return lastError();
        }
        ::Sleep(milliseconds);
    }
}

} // namespace

bool isLink(HANDLE file) {
    FILE_ATTRIBUTE_TAG_INFO tag{};
    return ::GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof(tag)) != FALSE &&
           (tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsReparseTagNameSurrogate(tag.ReparseTag) != 0;
}

std::errc pathOf(HANDLE file, fs::path& path) {
    std::wstring room(32768, L'\0'); // more than any path has
    const DWORD length = ::GetFinalPathNameByHandleW(file, room.data(), static_cast<DWORD>(room.size()), 0);
    if (length == 0 || length >= room.size()) {
        return lastError();
    }
    room.resize(length);
    path = std::move(room);
    return done;
}

std::errc renamePath(const fs::path& from, const fs::path& to) {
    return patiently(
        [&] { return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH); });
}

std::errc removePath(const fs::path& path) {
    {
        // So that the name is free at once, even if others have the file open.
        const OpenHandle file(path, DELETE, FILE_FLAG_OPEN_REPARSE_POINT);
        FILE_DISPOSITION_INFO_EX disposition{FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS};
        if (file.isOpen() &&
            ::SetFileInformationByHandle(file.get(), dispositionEx, &disposition, sizeof(disposition)) != FALSE) {
            return done;
        }
    }
    return patiently([&] { return ::DeleteFileW(path.c_str()); }); // a file system without that
}

std::errc makeDirectory(const fs::path& path) {
    return outcome(::CreateDirectoryW(path.c_str(), nullptr));
}

std::errc readLink(const fs::path& link, fs::path& target) {
    const OpenHandle found(link, FILE_READ_ATTRIBUTES, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS);
    if (!found.isOpen() || !isLink(found.get())) {
        return found.isOpen() ? std::errc::invalid_argument : lastError();
    }
    const OpenHandle named(link, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS);
    if (!named.isOpen()) {
        return lastError();
    }
    const std::errc result = pathOf(named.get(), target);
    target = asWritten(target);
    return result;
}

} // namespace orv::utilities

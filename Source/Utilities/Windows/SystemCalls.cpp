#include "Utilities/SystemCalls.h"

#include "Utilities/DirectoryNames.h"
#include "Utilities/Windows/Access.h"
#include "Utilities/Windows/OpenHandle.h"
#include "Utilities/Windows/PathCalls.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <windows.h>

namespace orv::utilities {

namespace {

namespace fs = std::filesystem;

HANDLE number(Handle file) {
    return reinterpret_cast<HANDLE>(file); // NOLINT(performance-no-int-to-ptr)
}

DWORD accessOf(Opening opening) {
    switch (opening) {
    case Opening::Read:
    case Opening::ReadNoLink:
    case Opening::Directory:
        return GENERIC_READ;
    case Opening::MakeNew:
        return GENERIC_READ | GENERIC_WRITE | WRITE_DAC;
    default:
        return GENERIC_READ | GENERIC_WRITE;
    }
}

DWORD dispositionOf(Opening opening) {
    return opening == Opening::Make ? OPEN_ALWAYS : opening == Opening::MakeNew ? CREATE_NEW : OPEN_EXISTING;
}

std::errc openFile(const fs::path& path, Opening opening, Handle& opened) {
    opened = Handle::None;
    const bool mindsLinks = opening == Opening::ReadNoLink || opening == Opening::WriteNoLink;
    if (mindsLinks) {
        // By a handle of its own: one on the link itself would skip the service that keeps a file elsewhere.
        const OpenHandle found(path, FILE_READ_ATTRIBUTES, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS);
        if (found.isOpen() && isLink(found.get())) {
            return std::errc::too_many_symbolic_link_levels;
        }
    }
    std::optional<OwnerOnly> owner;
    if (opening == Opening::MakeNew) {
        owner.emplace();
    }
    const HANDLE file =
        ::CreateFileW(path.c_str(), accessOf(opening), shareAll, owner ? owner->get() : nullptr, dispositionOf(opening),
                      opening == Opening::Directory ? FILE_FLAG_BACKUP_SEMANTICS : FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const std::errc reason = lastError();
        const DWORD attributes = ::GetFileAttributesW(path.c_str());
        const bool isDirectory = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return isDirectory && reason == std::errc::permission_denied ? std::errc::is_a_directory : reason;
    }
    if (::GetFileType(file) != FILE_TYPE_DISK) { // such as CON
        ::CloseHandle(file);
        return std::errc::not_supported;
    }
    opened = static_cast<Handle>(reinterpret_cast<std::intptr_t>(file));
    return done;
}

void closeFile(Handle file) {
    ::CloseHandle(number(file));
}

std::errc openStream(Handle file, std::ios_base::openmode direction, std::fstream& stream) {
    fs::path path;
    const std::errc found = pathOf(number(file), path);
    if (found != done) {
        return found;
    }
    // The standard has no way from a handle to a stream. Another handle of the process isn't kept off by the lock,
    // whose place is behind all content. For output alone a stream would empty the file.
    stream.open(path, direction | std::ios_base::in | std::ios_base::binary);
    return stream.is_open() ? done : std::errc::permission_denied;
}

/// A byte that no file has: locks bind here, and others may read meanwhile.
OVERLAPPED lockedPlace() {
    OVERLAPPED place{};
    place.OffsetHigh = 0x40000000;
    return place;
}

std::errc lock(Handle file, bool exclusive) {
    OVERLAPPED place = lockedPlace();
    const DWORD flags = LOCKFILE_FAIL_IMMEDIATELY | (exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0U);
    const std::errc result = outcome(::LockFileEx(number(file), flags, 0, 1, 0, &place));
    const DWORD reason = ::GetLastError();
    const bool isHeld = result != done && (reason == ERROR_LOCK_VIOLATION || reason == ERROR_IO_PENDING);
    return isHeld ? std::errc::resource_unavailable_try_again : result;
}

std::errc unlock(Handle file) {
    OVERLAPPED place = lockedPlace();
    return outcome(::UnlockFileEx(number(file), 0, 1, 0, &place));
}

constexpr std::int64_t ticksUntil1970 = 116'444'736'000'000'000; // since 1601
constexpr std::int64_t nanosecondsPerTick = 100;

/// Since 1970; of a time that takes more than 64 bits then, the nearest one.
std::int64_t nanoseconds(const LARGE_INTEGER& time) {
    constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max() / nanosecondsPerTick;
    return std::clamp(time.QuadPart - ticksUntil1970, -limit, limit) * nanosecondsPerTick;
}

FileState::Identity identityOf(HANDLE file, const BY_HANDLE_FILE_INFORMATION& information) {
    FILE_ID_INFO id{};
    FileState::Identity identity;
    if (::GetFileInformationByHandleEx(file, FileIdInfo, &id, sizeof(id)) != FALSE) {
        identity.volume = id.VolumeSerialNumber;
        static_assert(sizeof(id.FileId) == sizeof(identity.file));
        std::memcpy(identity.file.data(), &id.FileId, sizeof(id.FileId));
    } else { // a file system with shorter ones
        identity.volume = information.dwVolumeSerialNumber;
        identity.file = {(std::uint64_t{information.nFileIndexHigh} << 32U) | information.nFileIndexLow, 0};
    }
    return identity;
}

std::errc stateOf(HANDLE file, FileState& state) {
    if (::GetFileType(file) != FILE_TYPE_DISK) {
        return std::errc::not_supported;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    FILE_BASIC_INFO times{};
    if (::GetFileInformationByHandle(file, &information) == FALSE ||
        ::GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof(times)) == FALSE) {
        return lastError();
    }
    if ((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::errc::is_a_directory;
    }
    const bool knowsChanges = times.ChangeTime.QuadPart != 0; // FAT doesn't
    state = {identityOf(file, information),
             (std::uint64_t{information.nFileSizeHigh} << 32U) | information.nFileSizeLow,
             nanoseconds(times.LastWriteTime), nanoseconds(knowsChanges ? times.ChangeTime : times.LastWriteTime)};
    return done;
}

std::errc getState(Handle file, FileState& state) {
    return stateOf(number(file), state);
}

std::errc getStateOf(const fs::path& path, FileState& state) {
    const OpenHandle file(path, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS);
    return file.isOpen() ? stateOf(file.get(), state) : lastError();
}

/// Reads or writes at the position, which moves that of the file: it is put back.
template <typename Transfer>
std::errc transferAt(Handle file, std::size_t size, std::uint64_t position, std::size_t& moved, Transfer transfer) {
    constexpr std::size_t maximum = std::size_t{1} << 30U;
    moved = 0;
    LARGE_INTEGER before{};
    if (::SetFilePointerEx(number(file), {}, &before, FILE_CURRENT) == FALSE) {
        return lastError();
    }
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(position);
    place.OffsetHigh = static_cast<DWORD>(position >> 32U);
    DWORD part = 0;
    std::errc result = outcome(transfer(number(file), static_cast<DWORD>(std::min(size, maximum)), &part, &place));
    if (result != done && ::GetLastError() == ERROR_HANDLE_EOF) {
        result = done;
    }
    moved = part;
    const std::errc back = outcome(::SetFilePointerEx(number(file), before, nullptr, FILE_BEGIN));
    return result == done ? back : result;
}

std::errc readAt(Handle file, char* buffer, std::size_t size, std::uint64_t position, std::size_t& read) {
    return transferAt(file, size, position, read, [&](HANDLE from, DWORD part, DWORD* moved, OVERLAPPED* place) {
        return ::ReadFile(from, buffer, part, moved, place);
    });
}

std::errc writeAt(Handle file, std::string_view content, std::uint64_t position, std::size_t& written) {
    return transferAt(file, content.size(), position, written,
                      [&](HANDLE to, DWORD part, DWORD* moved, OVERLAPPED* place) {
                          return ::WriteFile(to, content.data(), part, moved, place);
                      });
}

std::errc setSize(Handle file, std::uint64_t size) {
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
    return outcome(::SetFileInformationByHandle(number(file), FileEndOfFileInfo, &end, sizeof(end)));
}

std::errc setModificationTime(Handle file, std::int64_t time) {
    const std::int64_t ticks = ticksUntil1970 + time / nanosecondsPerTick;
    const FILETIME modification = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
    return outcome(::SetFileTime(number(file), nullptr, nullptr, &modification));
}

std::errc takeAccess(Handle file, Handle model) {
    return takePermissions(number(file), number(model));
}

std::errc sync(Handle file) {
    FileState ignored;
    // The names in a directory are the file system's own to keep: its journal has them in order.
    return stateOf(number(file), ignored) == std::errc::is_a_directory ? done
                                                                       : outcome(::FlushFileBuffers(number(file)));
}

} // namespace

SystemCalls systemCalls = {
    openFile, closeFile,           openStream, lock, unlock,     getState,   getStateOf,    readAt,   writeAt,
    setSize,  setModificationTime, takeAccess, sync, renamePath, removePath, makeDirectory, readLink, listNames};

} // namespace orv::utilities

#include "Annotate/Turn.h"

#include "Utilities/Descriptor.h"

#include <string>
#include <windows.h>
// That needs what that one declares.
#include <sddl.h>

namespace annotate {

namespace {

/// A name that all processes of the machine have for the folder, or for the nearest one above it that exists.
std::wstring nameOf(std::filesystem::path folder) {
    std::error_code ignored;
    while (!std::filesystem::is_directory(folder, ignored) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    std::wstring name = L"Global\\annotate";
    const auto opened = orv::utilities::Descriptor::open(folder, orv::utilities::Opening::Directory);
    BY_HANDLE_FILE_INFORMATION information{};
    if (opened.isOpen() &&
        ::GetFileInformationByHandle(reinterpret_cast<HANDLE>(opened.get()), &information) != FALSE) {
        for (const DWORD part :
             {information.dwVolumeSerialNumber, information.nFileIndexHigh, information.nFileIndexLow}) {
            name += L'-' + std::to_wstring(part);
        }
    }
    return name;
}

/// A mutex that all users of the machine can wait for; null if there is none to be had.
HANDLE openMutex(const std::wstring& name) {
    constexpr DWORD access = SYNCHRONIZE | MUTEX_MODIFY_STATE;
    SECURITY_ATTRIBUTES forAll{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
    ::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:(A;;0x00100001;;;WD)", SDDL_REVISION_1,
                                                           &forAll.lpSecurityDescriptor, nullptr);
    const HANDLE mutex = ::CreateMutexExW(&forAll, name.c_str(), 0, access);
    ::LocalFree(forAll.lpSecurityDescriptor);
    return mutex;
}

} // namespace

bool Turn::await(const std::filesystem::path& folder, std::chrono::milliseconds patience) {
    // A folder can't be locked. The process that ends without releasing it leaves it to the next.
    const HANDLE mutex = openMutex(nameOf(folder));
    if (mutex == nullptr) {
        return true;
    }
    if (::WaitForSingleObject(mutex, static_cast<DWORD>(patience.count())) == WAIT_TIMEOUT) {
        ::CloseHandle(mutex);
        return false;
    }
    held = reinterpret_cast<std::intptr_t>(mutex);
    return true;
}

void Turn::end() const {
    if (held != -1) {
        const auto mutex = reinterpret_cast<HANDLE>(held); // NOLINT(performance-no-int-to-ptr)
        ::ReleaseMutex(mutex);
        ::CloseHandle(mutex);
    }
}

} // namespace annotate

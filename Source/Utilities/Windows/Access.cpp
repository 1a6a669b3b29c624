#include "Utilities/Windows/Access.h"

#include <aclapi.h>
#include <array>
#include <cstddef>
#include <sddl.h>
#include <string>

namespace orv::utilities {

std::errc lastError() {
    const DWORD error = ::GetLastError();
    switch (error) { // which the standard library takes for others, or doesn't know
    case ERROR_INVALID_NAME:
        return std::errc::invalid_argument;
    case ERROR_DELETE_PENDING:
        return std::errc::permission_denied;
    case ERROR_FILE_CORRUPT:
        return std::errc::io_error;
    default:
        break;
    }
    const auto condition = std::system_category().default_error_condition(static_cast<int>(error));
    return condition.category() == std::generic_category() ? static_cast<std::errc>(condition.value())
                                                           : std::errc::io_error;
}

namespace {

/// The name by which the system knows who runs the process; empty if it can't be had.
std::wstring userIdentifier() {
    std::wstring identifier;
    HANDLE token = nullptr;
    if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token) == FALSE) {
        return identifier;
    }
    alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
    DWORD size = 0;
    LPWSTR text = nullptr;
    if (::GetTokenInformation(token, TokenUser, user.data(), static_cast<DWORD>(user.size()), &size) != FALSE &&
        ::ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text) != FALSE) {
        identifier = text;
        ::LocalFree(text);
    }
    ::CloseHandle(token);
    return identifier;
}

} // namespace

OwnerOnly::OwnerOnly() {
    // Protected, so that nothing comes from the folder; all is allowed to the user.
    const std::wstring permissions = L"D:P(A;;FA;;;" + userIdentifier() + L")";
    ::ConvertStringSecurityDescriptorToSecurityDescriptorW(permissions.c_str(), SDDL_REVISION_1,
                                                           &attributes.lpSecurityDescriptor, nullptr);
}

OwnerOnly::~OwnerOnly() {
    ::LocalFree(attributes.lpSecurityDescriptor);
}

std::errc takePermissions(HANDLE file, HANDLE model) {
    PACL permissions = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    DWORD result = ::GetSecurityInfo(model, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &permissions,
                                     nullptr, &descriptor);
    if (result == ERROR_SUCCESS) {
        SECURITY_DESCRIPTOR_CONTROL control = 0;
        DWORD revision = 0;
        ::GetSecurityDescriptorControl(descriptor, &control, &revision);
        const DWORD inheritance = (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                                     : UNPROTECTED_DACL_SECURITY_INFORMATION;
        result = ::SetSecurityInfo(file, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr,
                                   permissions, nullptr);
        ::LocalFree(descriptor);
    }
    ::SetLastError(result);
    return result == ERROR_SUCCESS ? done : lastError();
}

} // namespace orv::utilities

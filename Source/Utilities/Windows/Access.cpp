#include "Utilities/Windows/Access.h"

#include <aclapi.h>
#include <sddl.h>

namespace orv::utilities {

std::errc lastError() {
    const auto condition = std::system_category().default_error_condition(static_cast<int>(::GetLastError()));
    return condition.category() == std::generic_category() ? static_cast<std::errc>(condition.value())
                                                           : std::errc::io_error;
}

OwnerOnly::OwnerOnly() {
    // Protected, so that nothing comes from the folder; all is allowed to who owns the file.
    ::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)", SDDL_REVISION_1,
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

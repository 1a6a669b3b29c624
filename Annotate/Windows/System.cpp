#include "Annotate/System.h"

#include "Annotate/Windows/Console.h"

#include <windows.h>
// Those need what that one declares.
#define SECURITY_WIN32
#include <aclapi.h>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <security.h>
#include <shellapi.h>
#include <utf8proc.h>

namespace annotate {

namespace {

std::string toUtf8(const wchar_t* text) {
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, converted.data(), size, nullptr, nullptr);
    converted.resize(converted.size() - 1); // without the NUL
    return converted;
}

HANDLE handleOf(StandardStream stream) {
    return ::GetStdHandle(stream == StandardStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

std::errc refusal(const std::filesystem::path& path, int mode) {
    return ::_waccess(path.c_str(), mode) == 0 ? std::errc{} : static_cast<std::errc>(errno);
}

} // namespace

std::vector<std::string> beginProcess(int /*argc*/, char** /*argv*/) {
    prepareConsole();
    std::atexit(restoreConsole);
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        ::_setmode(::_fileno(stream), _O_BINARY);
    }
    // A console that gets the bytes of a character one by one doesn't show it.
    constexpr std::size_t room = 65536;
    std::setvbuf(stdout, nullptr, _IOFBF, room);
    std::setvbuf(stderr, nullptr, _IOFBF, room);
    int count = 0;
    wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> converted;
    for (int place = 1; place < count; ++place) {
        converted.push_back(toUtf8(words[place]));
    }
    ::LocalFree(static_cast<void*>(words));
    return converted;
}

std::optional<std::string> environmentValue(const std::string& name) {
    const wchar_t* const value = ::_wgetenv(std::filesystem::path(name).c_str());
    return value == nullptr ? std::nullopt : std::optional(toUtf8(value));
}

std::string userName() {
    std::wstring room(1024, L'\0');
    auto size = static_cast<ULONG>(room.size());
    if (::GetUserNameExW(NameDisplay, room.data(), &size) != 0 && room.front() != L'\0') {
        return toUtf8(room.c_str());
    }
    auto accountSize = static_cast<DWORD>(room.size());
    return ::GetUserNameW(room.data(), &accountSize) == FALSE ? "" : toUtf8(room.c_str());
}

unsigned long processNumber() {
    return ::GetCurrentProcessId();
}

bool isTerminal(StandardStream stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode) != FALSE;
}

std::size_t terminalColumns() {
    CONSOLE_SCREEN_BUFFER_INFO console{};
    const bool isKnown = ::GetConsoleScreenBufferInfo(handleOf(StandardStream::Output), &console) != FALSE;
    return isKnown ? static_cast<std::size_t>(console.srWindow.Right - console.srWindow.Left + 1) : 80;
}

std::size_t columnsOf(char32_t character) {
    return static_cast<std::size_t>(::utf8proc_charwidth(static_cast<utf8proc_int32_t>(character)));
}

std::errc refusalOfReading(const std::filesystem::path& path) {
    return refusal(path, 4);
}

std::errc refusalOfWriting(const std::filesystem::path& path) {
    return refusal(path, 2);
}

void giveUsualAccess(const std::filesystem::path& path) {
    // Nothing of its own: what remains is from the folder.
    ACL none{};
    ::InitializeAcl(&none, sizeof(none), ACL_REVISION);
    std::wstring name = path.wstring();
    ::SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                            DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION, nullptr, nullptr, &none,
                            nullptr);
}

} // namespace annotate

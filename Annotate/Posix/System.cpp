#include "Annotate/System.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cwchar>
#include <pwd.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace annotate {

namespace {

std::errc refusal(const std::filesystem::path& path, int mode) {
    return ::access(path.c_str(), mode) == 0 ? std::errc{} : static_cast<std::errc>(errno);
}

} // namespace

std::vector<std::string> beginProcess(int argc, char** argv) {
    // For the widths of characters; without that locale those outside ASCII count as one column.
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));
    // A file that is to be larger than the shell's limit can't be written then, which is told.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    return {argv + 1, argv + argc};
}

std::optional<std::string> environmentValue(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::string userName() {
    const passwd* const login = ::getpwuid(::geteuid());
    if (login == nullptr) {
        return "";
    }
    const std::string_view fullName(login->pw_gecos == nullptr ? "" : login->pw_gecos);
    const std::string_view name = fullName.substr(0, fullName.find(','));
    return std::string(name.empty() ? login->pw_name : name);
}

unsigned long processNumber() {
    return static_cast<unsigned long>(::getpid());
}

bool isTerminal(StandardStream stream) {
    return ::isatty(stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

std::size_t terminalColumns() {
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

std::size_t columnsOf(char32_t character) {
    const int width = ::wcwidth(static_cast<wchar_t>(character));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

std::errc refusalOfReading(const std::filesystem::path& path) {
    return refusal(path, R_OK);
}

std::errc refusalOfWriting(const std::filesystem::path& path) {
    return refusal(path, W_OK);
}

void giveUsualAccess(const std::filesystem::path& path) {
    const ::mode_t mask = ::umask(0);
    ::umask(mask);
    std::error_code ignored;
    std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0666 & ~mask), ignored);
}

} // namespace annotate

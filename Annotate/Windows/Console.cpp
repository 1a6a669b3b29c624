#include "Annotate/Windows/Console.h"

#include <windows.h>

namespace annotate {

namespace {

/// 0 if there is no console.
UINT codePageBefore = 0;

} // namespace

void prepareConsole() {
    codePageBefore = ::GetConsoleOutputCP();
    if (codePageBefore == 0) {
        return;
    }
    ::SetConsoleOutputCP(CP_UTF8);
    const HANDLE error = ::GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (::GetConsoleMode(error, &mode) != FALSE) {
        ::SetConsoleMode(error, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

void restoreConsole() {
    if (codePageBefore != 0) {
        ::SetConsoleOutputCP(codePageBefore);
    }
}

} // namespace annotate

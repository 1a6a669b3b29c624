#include "Annotate/Interruption.h"

#include "Annotate/System.h"

#include <mutex>
#include <string>
#include <windows.h>

namespace annotate {

namespace {

// The handler runs in a thread of its own, which has this from its beginning to the end of the process.
std::mutex turn;

/// Whether it was done, and that was said.
bool isDone = false;

std::string saidAtEnd;
std::filesystem::path unfinished;

BOOL WINAPI end(DWORD /*event*/) {
    turn.lock();
    if (!isDone) {
        const std::string said =
            std::string(isTerminal(StandardStream::Error) ? "\n" : "") + "annotate: Interrupted. " + saidAtEnd + "\n";
        DWORD written = 0;
        ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), said.data(), static_cast<DWORD>(said.size()), &written, nullptr);
        if (!unfinished.empty()) {
            ::DeleteFileW(unfinished.c_str());
        }
    }
    return FALSE; // the system's own handler ends the process
}

} // namespace

Interruption::Interruption(std::string_view sentence) {
    saidAtEnd = sentence;
    ::SetConsoleCtrlHandler(end, TRUE);
}

Interruption::~Interruption() {
    if (!isHeld) {
        hold();
    }
    ::SetConsoleCtrlHandler(end, FALSE);
    isDone = false;
    unfinished.clear();
    turn.unlock();
}

void Interruption::removeAtEnd(const std::filesystem::path& path) {
    const std::lock_guard lock(turn);
    unfinished = path;
}

void Interruption::hold() {
    turn.lock();
    isHeld = true;
}

void Interruption::release() {
    isDone = true;
    isHeld = false;
    turn.unlock();
}

} // namespace annotate

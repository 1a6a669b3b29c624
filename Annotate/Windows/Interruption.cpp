#include "Annotate/Interruption.h"

#include "Annotate/System.h"
#include "Annotate/Windows/Console.h"

#include <mutex>
#include <string>
#include <windows.h>

namespace annotate {

namespace {

// The handler runs in a thread of its own, which has this from its beginning to the end of the process.
std::mutex turn;

/// Whether there is something that isn't done, and nothing came of it so far.
bool isUnderWay = false;

std::string saidAtEnd;
std::filesystem::path unfinished;

BOOL WINAPI end(DWORD /*event*/) {
    turn.lock();
    if (isUnderWay) {
        const std::string said =
            std::string(isTerminal(StandardStream::Error) ? "\n" : "") + "annotate: Interrupted. " + saidAtEnd + "\n";
        DWORD written = 0;
        ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), said.data(), static_cast<DWORD>(said.size()), &written, nullptr);
        if (!unfinished.empty()) {
            ::DeleteFileW(unfinished.c_str());
        }
    }
    restoreConsole();
    return FALSE; // the system's own handler ends the process
}

} // namespace

Interruption::Interruption(std::string_view sentence) {
    // It stays: while it waits for its turn, it can't be taken away.
    static const BOOL isSet = ::SetConsoleCtrlHandler(end, TRUE);
    static_cast<void>(isSet);
    const std::lock_guard lock(turn);
    saidAtEnd = sentence;
    isUnderWay = true;
}

Interruption::~Interruption() {
    if (!isHeld) {
        hold();
    }
    isUnderWay = false;
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
    isUnderWay = false;
    isHeld = false;
    turn.unlock();
}

} // namespace annotate

#include "Annotate/Interruption.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>
#include <unistd.h>

namespace annotate {

namespace {

constexpr std::array<int, 3> handledSignals{SIGHUP, SIGINT, SIGTERM};

/// Those that are handled now.
sigset_t signals{};

/// Whether it was done, and that was said.
volatile std::sig_atomic_t isDone = 0;

// What the handler says and removes; changed while no signal can come.
std::string_view saidAtEnd;
std::array<char, 4096> unfinished{};

/// Calls nothing but what a signal's handler may.
void end(int signal) {
    if (isDone == 0) {
        for (const std::string_view part :
             {std::string_view(::isatty(STDERR_FILENO) == 0 ? "" : "\n"), std::string_view("annotate: Interrupted. "),
              saidAtEnd, std::string_view("\n")}) {
            static_cast<void>(::write(STDERR_FILENO, part.data(), part.size()));
        }
        if (unfinished.front() != '\0') {
            static_cast<void>(::unlink(unfinished.data()));
        }
    }
    static_cast<void>(::raise(signal)); // the disposition is the default one again, and the handler's end lets it in
}

} // namespace

Interruption::Interruption(std::string_view sentence) {
    saidAtEnd = sentence;
    ::sigemptyset(&signals);
    struct sigaction action {};
    action.sa_handler = end;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : handledSignals) {
        struct sigaction before {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler == SIG_DFL) { // in the background of a script it is ignored
            ::sigaction(signal, &action, nullptr);
            ::sigaddset(&signals, signal);
        }
    }
}

Interruption::~Interruption() {
    if (isHeld) {
        ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
    }
    for (const int signal : handledSignals) {
        if (::sigismember(&signals, signal) == 1) {
            static_cast<void>(std::signal(signal, SIG_DFL));
        }
    }
    isDone = 0;
    unfinished.front() = '\0';
}

void Interruption::removeAtEnd(const std::filesystem::path& path) {
    hold();
    const std::string& bytes = path.native();
    if (bytes.size() < unfinished.size()) {
        std::copy_n(bytes.c_str(), bytes.size() + 1, unfinished.begin());
    }
    isHeld = false;
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

void Interruption::hold() {
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    isHeld = true;
}

void Interruption::release() {
    isDone = 1;
    isHeld = false;
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace annotate

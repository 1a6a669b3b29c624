#include "Annotate/Interruption.h"

#include <array>
#include <string_view>
#include <unistd.h>

namespace annotate {

namespace {

constexpr std::array<int, 2> handledSignals{SIGINT, SIGTERM};

/// Whether it was stored, and that was said.
volatile std::sig_atomic_t isStored = 0;

/// Calls nothing but what a signal's handler may.
void end(int signal) {
    constexpr std::string_view sentence = "\nannotate: Interrupted. Nothing was stored.\n";
    if (isStored == 0) {
        const std::size_t skipped = ::isatty(STDERR_FILENO) == 0 ? 1 : 0;
        static_cast<void>(::write(STDERR_FILENO, sentence.data() + skipped, sentence.size() - skipped));
    }
    static_cast<void>(::raise(signal)); // the disposition is the default one again, and the handler's end lets it in
}

} // namespace

Interruption::Interruption() {
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
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
    for (const int signal : handledSignals) {
        if (::sigismember(&signals, signal) == 1) {
            static_cast<void>(std::signal(signal, SIG_DFL));
        }
    }
    isStored = 0;
}

void Interruption::hold() {
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
}

void Interruption::release() {
    isStored = 1;
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace annotate

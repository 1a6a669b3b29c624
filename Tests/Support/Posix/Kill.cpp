#include "Support/Kill.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orv::tests {

bool isKilledBefore(int call, const std::function<void()>& action) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        static_cast<void>(::raise(SIGSTOP));
        action();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    for (int stops = 0; WIFSTOPPED(status); ++stops) {
        if (stops == 2 * call + 1) { // the first is its own; then one before and one after each call
            ::kill(child, SIGKILL);
        } else {
            ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        }
        ::waitpid(child, &status, 0);
    }
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "call " << call;
    return WIFSIGNALED(status);
}

} // namespace orv::tests

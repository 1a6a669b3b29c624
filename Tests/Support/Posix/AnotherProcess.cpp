#include "Support/AnotherProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/wait.h>
#include <unistd.h>

namespace orv::tests {

std::string inAnotherProcess(const std::function<std::string()>& action) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string text = action();
        const bool isTold = ::write(ends[1], text.data(), text.size()) == std::ssize(text);
        ::_exit(isTold && !::testing::Test::HasFailure() ? 0 : 1);
    }
    ::close(ends[1]);
    std::string text(1000, '\0');
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::read(ends[0], text.data(), text.size()))));
    ::close(ends[0]);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    return text;
}

TemporaryDirectory directoryOfTest() {
    return {};
}

void share(const TemporaryDirectory& /*directory*/) {}

bool isOnTheWay() {
    return false;
}

} // namespace orv::tests

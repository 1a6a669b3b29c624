#pragma once

#include "Annotate/Program.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace annotate {

struct Outcome {
    int status = -1;
    std::string output;
    std::string error;
};

/// Starts annotate, as Anna, with a store in a directory of its own.
class CommandTest : public ::testing::Test {
protected:
    CommandTest() { ::setenv("ANNOTATE_AUTHOR", "Anna", 1); }

    /// With standard output to the file named, or to one of the test's own.
    pid_t start(std::vector<std::string> arguments, const std::string& output = {}) const {
        arguments.insert(arguments.begin(), program());
        std::vector<char*> pointers(arguments.size() + 1);
        std::transform(arguments.begin(), arguments.end(), pointers.begin(), [](auto& each) { return each.data(); });
        const pid_t process = ::fork();
        if (process == 0) {
            const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
            ::dup2(::open((output.empty() ? outputOf(::getpid()) : output).c_str(), flags, 0600), STDOUT_FILENO);
            ::dup2(::open(errorOf(::getpid()).c_str(), flags, 0600), STDERR_FILENO);
            ::execv(pointers.front(), pointers.data());
            ::_exit(127);
        }
        return process;
    }

    Outcome finish(pid_t process) const {
        int status = 0;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, orv::tests::contentOf(outputOf(process)),
                orv::tests::contentOf(errorOf(process))};
    }

    Outcome run(const std::vector<std::string>& arguments) const { return finish(start(arguments)); }

    std::string outputOf(pid_t process) const { return directory / (std::to_string(process) + ".out"); }
    std::string errorOf(pid_t process) const { return directory / (std::to_string(process) + ".err"); }

    std::string firstId(const std::string& model, const std::string& ifcClass = "IfcObject") const {
        return run({model, "objects", "--class", ifcClass}).output.substr(0, 22);
    }

    void expectRefusal(const std::vector<std::string>& arguments, int status, const std::string& error) const {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << outcome.error;
        EXPECT_NE(outcome.error.find(error), std::string::npos) << outcome.error << "doesn't tell: " << error;
        EXPECT_EQ(outcome.output, "");
    }

    orv::tests::TemporaryDirectory directory;
    std::string store = directory / "notes.xml";
};

/// The house, and the models in ORV_REAL_MODELS.
inline std::vector<std::string> models() {
    std::vector<std::string> paths = {HOUSE};
    if (const char* const others = std::getenv("ORV_REAL_MODELS")) {
        for (const auto& entry : std::filesystem::directory_iterator(others)) {
            paths.push_back(entry.path());
        }
    }
    return paths;
}

inline std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace annotate

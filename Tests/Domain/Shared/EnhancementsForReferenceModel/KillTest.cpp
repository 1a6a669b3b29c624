#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <sys/ptrace.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using tests::contentOf;
using tests::setContent;
using utilities::FileLock;

constexpr int recordCount = 20;

/// Processes killed at every single system call, before it and after it.
class KillTest : public tests::StoreTest {
protected:
    /// Runs the action in another process and kills that at its stop of that number. Gives false if it ended before.
    static bool isKilledAt(int stop, const std::function<void()>& action) {
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
            if (stops == stop) {
                ::kill(child, SIGKILL);
            } else {
                ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
            }
            ::waitpid(child, &status, 0);
        }
        EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0) << "stop " << stop;
        return WIFSIGNALED(status);
    }

    /// What a new process loads, one text a line.
    std::string loadedByNext() const {
        int results[2];
        EXPECT_EQ(::pipe(results), 0);
        EXPECT_TRUE(inAnotherProcess([&] {
            std::string all;
            for (const std::string& text : loadedTexts()) {
                all += text + '\n';
            }
            return ::write(results[1], all.data(), all.size()) >= 0;
        }));
        ::close(results[1]);
        std::string all(1000, '\0');
        all.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::read(results[0], all.data(), all.size()))));
        ::close(results[0]);
        return all;
    }
};

TEST_F(KillTest, losesNoRecordOfALoadAndAnAddition) {
    std::string elements;
    std::string texts;
    for (int number = 0; number < recordCount; ++number) {
        elements += element(std::to_string(number)) + (number == 5 ? "  <Other>&amp;</Other>\n" : "");
        texts += std::to_string(number) + '\n';
    }
    std::string wide = "<Enhancements>\n\n" + elements + "</Enhancements>";
    for (std::size_t at = 0; (at = wide.find('\n', at)) != std::string::npos; at += 3) {
        wide.insert(at, "\n\n");
    }
    std::string narrow;
    std::copy_if(wide.begin(), wide.end(), std::back_inserter(narrow), [](char c) { return c != '\n'; });
    for (const std::string& stored : {documentOf(elements), wide, narrow}) {
        bool isKilled = true;
        for (int stop = 0; isKilled; ++stop) {
            setContent(path, stored);
            isKilled = isKilledAt(stop, [] { add("new"); });
            ASSERT_TRUE(FileLock::tryLock(path, true, FileLock::Access::ReadWrite)) << "stop " << stop;
            const std::string loaded = loadedByNext();
            ASSERT_TRUE(loaded == texts + "new\n" || (isKilled && loaded == texts)) << "stop " << stop << '\n'
                                                                                    << loaded;
            ASSERT_NE(contentOf(path).find("  <Other>&amp;</Other>\n"), std::string::npos) << "stop " << stop;
            ASSERT_EQ(fileCount(), 1U) << "stop " << stop;
        }
    }
}

TEST_F(KillTest, losesNothingOfAForeignFile) {
    const std::string foreign = "<Enhancements>" + element("torn") + "  <Sample>";
    bool isKilled = true;
    for (int stop = 0; isKilled; ++stop) {
        directory.empty();
        setContent(path, foreign);
        isKilled = isKilledAt(stop, [] { add("new"); });
        const auto copies = keptCopies();
        ASSERT_TRUE(contentOf(path) == foreign || copies == std::vector{foreign}) << "stop " << stop;
        ASSERT_TRUE(inAnotherProcess([] { return add("next"); })) << "stop " << stop;
        for (const std::string& copy : keptCopies()) {
            // The space of a document that then wasn't written may be behind it.
            ASSERT_TRUE(copy.starts_with(foreign)) << "stop " << stop << '\n' << copy;
        }
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

#include "Support/TemporaryDirectory.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace orv::utilities {
namespace {

using Access = FileLock::Access;

TEST(FileHandleTest, isNotHeldByProgramsThatAreStarted) {
    const tests::TemporaryDirectory directory;
    const auto path = directory / "file";
    tests::setContent(path, "");
    const auto held = FileLock::tryLock(path, true, Access::ReadWrite);
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closed;
        if (std::filesystem::read_symlink(entry, closed) == path) {
            ++count;
            EXPECT_EQ(::fcntl(std::stoi(entry.path().filename()), F_GETFD), FD_CLOEXEC);
        }
    }
    EXPECT_GT(count, 0);
}

TEST(FileHandleTest, isNoneOfAPipeOrBelowAFile) {
    const tests::TemporaryDirectory directory;
    const auto pipe = directory / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::error_code error;
    EXPECT_FALSE(FileLock::tryLock(pipe, true, Access::ReadWrite, error));
    EXPECT_EQ(error, std::errc::not_supported) << error.message();
    EXPECT_FALSE(FileLock::tryLock(pipe, true, Access::Read));
    EXPECT_FALSE(FileLock::tryLock(pipe / "below", true, Access::Read, error));
    EXPECT_EQ(error, std::errc::not_a_directory) << error.message();
}

} // namespace
} // namespace orv::utilities

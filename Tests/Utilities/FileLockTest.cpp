#include "Utilities/FileLock.h"

#include "Support/TemporaryDirectory.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace orv::utilities {
namespace {

using Access = FileLock::Access;
using tests::contentOf;
using tests::setContent;

class FileLockTest : public ::testing::Test {
protected:
    tests::TemporaryDirectory directory;
    std::filesystem::path path = directory / "file";
};

TEST_F(FileLockTest, excludesOthersForAsLongAsItLives) {
    setContent(path, "old");
    auto held = FileLock::tryLock(path, true, Access::ReadWrite);
    ASSERT_TRUE(held);
    EXPECT_TRUE(held->getStream().good() && held->getStream().is_open());
    EXPECT_FALSE(FileLock::tryLock(path, true, Access::ReadWrite));
    EXPECT_FALSE(FileLock::tryLock(path, false, Access::Read));
    held.reset();
    const auto reading = FileLock::tryLock(path, false, Access::Read);
    EXPECT_TRUE(FileLock::tryLock(path, false, Access::Read));
    EXPECT_FALSE(FileLock::tryLock(path, true, Access::ReadWrite));
    std::string content;
    EXPECT_TRUE(reading->getStream() >> content);
    EXPECT_EQ(content, "old");
}

TEST_F(FileLockTest, leavesExactlyWhatWasWritten) {
    for (const std::string written : {"", "new", "something longer", "x"}) {
        setContent(path, "old content");
        FileLock::tryLock(path, true, Access::ReadWrite)->getStream() << written;
        EXPECT_EQ(contentOf(path), written.empty() ? "old content" : written);
    }
}

TEST_F(FileLockTest, doesNotCutWhatItCouldNotReplace) {
    setContent(path, "old content");
    {
        const auto held = FileLock::tryLock(path, true, Access::ReadWrite);
        held->getStream() << "new";
        held->getStream().setstate(std::ios_base::badbit);
    }
    EXPECT_EQ(contentOf(path), "new content");
}

TEST_F(FileLockTest, tellsWhyItIsNotTaken) {
    setContent(path, "held");
    const auto held = FileLock::tryLock(path, true, Access::ReadWrite);
    const std::pair<std::filesystem::path, std::errc> cases[] = {
        {"", std::errc::no_such_file_or_directory},
        {directory / "missing", std::errc::no_such_file_or_directory},
        {directory / ".", std::errc::is_a_directory},
        {path, std::errc::resource_unavailable_try_again},
    };
    for (const auto& [name, reason] : cases) {
        std::error_code error;
        EXPECT_FALSE(FileLock::tryLock(name, true, Access::ReadWrite, error)) << name;
        EXPECT_EQ(error, reason) << name << error.message();
        EXPECT_FALSE(FileLock::tryLock(name, true, Access::Read)) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(directory / "missing"));
}

TEST_F(FileLockTest, takesNoFileThatWasReplacedOrRemovedBeforeTheLockWasAcquired) {
    setContent(path, "old");
    static std::filesystem::path changed;
    static decltype(SystemCalls::lock) realLock;
    changed = path;
    realLock = std::exchange(systemCalls.lock, [](Handle file, bool exclusive) {
        std::filesystem::rename(changed, std::filesystem::path(changed) += ".old");
        setContent(changed, "new");
        return realLock(file, exclusive);
    });
    EXPECT_FALSE(FileLock::tryLock(path, true, Access::ReadWrite));
    systemCalls.lock = [](Handle file, bool exclusive) {
        std::filesystem::remove(changed);
        return realLock(file, exclusive);
    };
    EXPECT_FALSE(FileLock::tryLock(path, true, Access::ReadWrite));
    systemCalls.lock = realLock;
}

} // namespace
} // namespace orv::utilities

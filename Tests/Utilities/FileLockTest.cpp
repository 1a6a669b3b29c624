#include "Utilities/FileLock.h"

#include "Support/TemporaryDirectory.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/stat.h>

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
    EXPECT_FALSE(FileLock::tryLockNew(path));
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

TEST_F(FileLockTest, givesNullForWhatIsNoWritableFile) {
    const auto pipe = directory / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& name : {std::filesystem::path(), directory / "missing", directory / ".", pipe}) {
        EXPECT_FALSE(FileLock::tryLock(name, true, Access::ReadWrite)) << name;
        EXPECT_FALSE(FileLock::tryLock(name, true, Access::Read)) << name;
    }
    EXPECT_FALSE(std::filesystem::exists(directory / "missing"));
}

TEST_F(FileLockTest, makesANewFileButNeverTakesOneThatHasContent) {
    FileLock::tryLockNew(path)->getStream() << "first";
    EXPECT_EQ(contentOf(path), "first");
    EXPECT_FALSE(FileLock::tryLockNew(path));
    EXPECT_EQ(contentOf(path), "first");
    EXPECT_FALSE(FileLock::tryLockNew(directory / "missing/file"));
}

TEST_F(FileLockTest, takesNoFileThatWasReplacedOrRemovedBeforeTheLockWasHad) {
    setContent(path, "old");
    static std::filesystem::path changed;
    changed = path;
    systemCalls.flock = [](int descriptor, int operation) {
        std::filesystem::rename(changed, changed.native() + ".old");
        setContent(changed, "new");
        return ::flock(descriptor, operation);
    };
    EXPECT_FALSE(FileLock::tryLock(path, true, Access::ReadWrite));
    systemCalls.flock = [](int descriptor, int operation) {
        std::filesystem::remove(changed);
        return ::flock(descriptor, operation);
    };
    EXPECT_FALSE(FileLock::tryLock(path, true, Access::ReadWrite));
    EXPECT_FALSE(FileLock::tryLockNew(path));
    systemCalls.flock = ::flock;
}

} // namespace
} // namespace orv::utilities

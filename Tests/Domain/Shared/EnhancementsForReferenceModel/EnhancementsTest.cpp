#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"

#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;
using utilities::FileLock;

using EnhancementsTest = StoreTest;

TEST_F(EnhancementsTest, areEmptyWithoutAFileWhichIsNotMade) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    EXPECT_TRUE(database->getRecords().empty());
    EXPECT_FALSE(std::filesystem::exists(path));
    setContent(path, document({"late"}));
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb(), database);
    EXPECT_TRUE(database->getRecords().empty());
}

TEST_F(EnhancementsTest, areRewrittenOnceForEachRecordThatIsLoaded) {
    setContent(path, document({"a", "b", "c", "d"}));
    Enhancements::getOrCreateEnhancementsDb();
    EXPECT_EQ(SampleRecord::written, 1 + 2 + 3 + 4);
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d"}));
}

TEST_F(EnhancementsTest, refuseARecordWhileAnotherHoldsTheLockAndTakeItLater) {
    EXPECT_TRUE(add("a"));
    auto held = FileLock::tryLock(path, true, FileLock::Access::ReadWrite);
    EXPECT_FALSE(add("b"));
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb()->getRecords().size(), 1U);
    held.reset();
    EXPECT_EQ(contentOf(path), document({"a"}));
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "c"}));
}

TEST_F(EnhancementsTest, comeBackInANewFileWhenItVanishesOrThePathChanges) {
    EXPECT_TRUE(add("a"));
    std::filesystem::remove(path);
    EXPECT_TRUE(add("b"));
    EXPECT_EQ(contentOf(path), document({"a", "b"}));
    EnhancementsFile::setFilePath(directory / "new/store.xml");
    EXPECT_EQ(contentOf(path), document({"a", "b"}));
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(directory / "new/store.xml"), document({"a", "b", "c"}));
    EXPECT_EQ(contentOf(path), document({"a", "b"}));
}

class ThrowingRecord : public SampleRecord {
public:
    using SampleRecord::SampleRecord;
    TypedAttributes getAttributes() const override { throw std::runtime_error("no attributes"); }
};

TEST_F(EnhancementsTest, leaveTheFileWholeWhenAKindThrowsWhileItIsWritten) {
    EXPECT_TRUE(add("a"));
    Enhancements::addEnhancement(std::make_unique<ThrowingRecord>("Sample"));
    EXPECT_EQ(contentOf(path), document({"a"}));
    EXPECT_TRUE(FileLock::tryLock(path, true, FileLock::Access::ReadWrite));
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/ReportTest.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using tests::contentOf;
using tests::SampleRecord;
using tests::setContent;
using utilities::FileLock;

class EnhancementsTest : public tests::ReportTest {
protected:
    EnhancementsTest() {
        Factory::registerClass(std::make_unique<SampleRecord>("Sample"));
        EnhancementsFile::setFilePath(path);
    }

    static bool add(const std::string& text) {
        std::unique_ptr<EnhancementBase> record =
            std::make_unique<SampleRecord>("Sample", tests::TypedAttributes{{"Text", text}});
        Enhancements::addEnhancement(std::move(record));
        return record == nullptr;
    }

    static std::string document(const std::vector<std::string>& texts) {
        std::string content = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements>\n";
        for (const std::string& text : texts) {
            content += "  <Sample>\n    <OwnerId>0000000000000000000000</OwnerId>\n    <Text>" + text +
                       "</Text>\n  </Sample>\n";
        }
        return content + "</Enhancements>\n";
    }

    tests::TemporaryDirectory directory;
    std::filesystem::path path = directory / "store.xml";
};

TEST_F(EnhancementsTest, areEmptyWithoutAFileWhichIsNotMade) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    EXPECT_TRUE(database->getRecords().empty());
    EXPECT_FALSE(std::filesystem::exists(path));
    setContent(path, document({"late"}));
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb(), database);
    EXPECT_TRUE(database->getRecords().empty());
}

TEST_F(EnhancementsTest, areLoadedAtTheFirstAdditionInFileOrderWithTheNewRecordLast) {
    setContent(path, document({"a", "b"}));
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb()->getRecords().size(), 3U);
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

TEST_F(EnhancementsTest, areNotLoadedWhileAnotherHoldsTheLock) {
    setContent(path, document({"a", "b"}));
    const auto held = FileLock::tryLock(path, true, FileLock::Access::ReadWrite);
    EXPECT_TRUE(Enhancements::getOrCreateEnhancementsDb()->getRecords().empty());
    EXPECT_EQ(SampleRecord::destroyed, 2);
    EXPECT_EQ(contentOf(path), document({"a", "b"}));
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

TEST_F(EnhancementsTest, areClearedInMemoryAndInTheFileWithTheNextAddition) {
    EXPECT_TRUE(add("a"));
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    database->resetDb();
    database->resetDb();
    EXPECT_EQ(SampleRecord::destroyed, 1);
    EXPECT_EQ(contentOf(path), document({"a"}));
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb(), database);
    EXPECT_TRUE(database->getRecords().empty());
    EXPECT_TRUE(add("b"));
    EXPECT_EQ(contentOf(path), document({"b"}));
}

class ThrowingRecord : public SampleRecord {
public:
    using SampleRecord::SampleRecord;
    tests::TypedAttributes getAttributes() const override { throw std::runtime_error("no attributes"); }
};

TEST_F(EnhancementsTest, leaveTheFileWholeWhenAKindThrowsWhileItIsWritten) {
    EXPECT_TRUE(add("a"));
    Enhancements::addEnhancement(std::make_unique<ThrowingRecord>("Sample"));
    EXPECT_EQ(contentOf(path), document({"a"}));
    EXPECT_TRUE(FileLock::tryLock(path, true, FileLock::Access::ReadWrite));
}

TEST_F(EnhancementsTest, outliveAProcessKilledAtAnyMomentOfItsAdditions) {
    for (int run = 0; run < 20; ++run) {
        std::filesystem::remove(path);
        const pid_t child = ::fork();
        if (child == 0) {
            for (int number = 0; number < 500; ++number) {
                add("added " + std::to_string(number));
            }
            ::pause();
        }
        ::usleep(static_cast<useconds_t>(run) * 1500);
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ::waitpid(child, nullptr, 0);
        const std::string left = contentOf(path);
        // A process loads once, so the next addition is another process's.
        const pid_t next = ::fork();
        if (next == 0) {
            ::_exit(add("next") ? 0 : 1);
        }
        int status = 0;
        ::waitpid(next, &status, 0);
        EXPECT_EQ(status, 0) << "the next addition, run " << run;
        std::vector<std::string> texts;
        while (left.find("<Text>added " + std::to_string(texts.size()) + "</Text>") != std::string::npos) {
            texts.push_back("added " + std::to_string(texts.size()));
        }
        const bool isWhole = left == document(texts) || texts.empty();
        texts.emplace_back("next");
        EXPECT_EQ(contentOf(path), isWhole ? document(texts) : document({"next"})) << "run " << run << '\n' << left;
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"

#include "Support/FailingAllocation.h"
#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <sstream>

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

TEST_F(EnhancementsTest, areLoadedAtOnceWithOneRewrite) {
    const std::string other = "  <Other/>\n";
    setContent(path, documentOf(element("a") + other + element("b") + "<Sample><Text>c</Text></Sample>\n"));
    EXPECT_TRUE(Enhancements::loadAtOnce());
    EXPECT_EQ(SampleRecord::written, 3);
    EXPECT_EQ(loadedTexts(), "a b c ");
    EXPECT_EQ(contentOf(path), documentOf(element("a") + other + element("b") + element("c")));
    EXPECT_FALSE(Enhancements::loadAtOnce()) << "loaded";
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(contentOf(path), documentOf(element("a") + other + element("b") + element("c") + element("d")));
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(EnhancementsTest, areCarriedWhenTheFileIsLockedWhereTheyAreLoadedAtOnce) {
    setContent(path, document({"a", "b"}));
    {
        const auto held = FileLock::tryLock(path, true, FileLock::Access::ReadWrite);
        EXPECT_FALSE(Enhancements::loadAtOnce());
    }
    EXPECT_EQ(loadedTexts(), "");
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
}

TEST_F(EnhancementsTest, areNoneOfAMissingFileThatIsLoadedAtOnce) {
    EXPECT_TRUE(Enhancements::loadAtOnce());
    EXPECT_FALSE(std::filesystem::exists(path));
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

class ChangesTest : public StoreTest {
protected:
    ChangesTest() { EXPECT_TRUE(add("a") && add("b") && add("c")); }

    const std::shared_ptr<Enhancements> database = Enhancements::getOrCreateEnhancementsDb();

    static std::vector<std::unique_ptr<EnhancementBase>> twoRecords() {
        std::vector<std::unique_ptr<EnhancementBase>> records;
        for (const std::string text : {"d", "e"}) {
            records.push_back(std::make_unique<SampleRecord>("Sample", TypedAttributes{{"Text", text}}));
        }
        return records;
    }
};

TEST_F(ChangesTest, reachTheFileByOneRewrite) {
    record(1).attributes = {{"Text", "B"}};
    SampleRecord::written = 0;
    EXPECT_TRUE(Enhancements::saveChanges());
    EXPECT_EQ(SampleRecord::written, 3);
    EXPECT_EQ(contentOf(path), document({"a", "B", "c"}));

    const EnhancementBase* const first = &record(0);
    EXPECT_EQ(Enhancements::takeRecord(*first).get(), first);
    EXPECT_EQ(SampleRecord::destroyed, 1);
    EXPECT_EQ(contentOf(path), document({"B", "c"}));
    EXPECT_EQ(loadedTexts(), "B c ");
    const SampleRecord stranger("Sample");
    EXPECT_FALSE(Enhancements::takeRecord(stranger));

    auto records = twoRecords();
    SampleRecord::written = 0;
    EXPECT_TRUE(Enhancements::addEnhancements(records));
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(SampleRecord::written, 4);
    EXPECT_EQ(contentOf(path), document({"B", "c", "d", "e"}));
    EXPECT_TRUE(Enhancements::addEnhancements(records)) << "none";

    SampleRecord::written = 0;
    EXPECT_TRUE(Enhancements::takeRecords({&record(0), &stranger}).empty());
    EXPECT_TRUE(Enhancements::takeRecords({}).empty());
    EXPECT_EQ(SampleRecord::written, 0);
    record(1).attributes = {{"Text", "C"}};
    const EnhancementBase* const second = &record(2);
    const auto taken = Enhancements::takeRecords({second, &record(0), second});
    EXPECT_EQ(SampleRecord::written, 2);
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken.back().get(), second);
    EXPECT_EQ(contentOf(path), document({"C", "e"}));
    EXPECT_EQ(loadedTexts(), "C e ");

    database->resetDb();
    EXPECT_TRUE(Enhancements::saveChanges());
    EXPECT_EQ(contentOf(path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements/>\n");
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ChangesTest, reachTheFileOfAnotherPathAndTheFirstOneAgain) {
    const auto other = directory / "other.xml";
    record(0).attributes = {{"Text", "much longer than before"}};
    EnhancementsFile::setFilePath(other);
    EXPECT_TRUE(Enhancements::saveChanges());
    EXPECT_EQ(contentOf(other), document({"much longer than before", "b", "c"}));

    setContent(path, document({"a", "b", "c", "another program's"}));
    EnhancementsFile::setFilePath(directory / "./store.xml");
    EXPECT_TRUE(Enhancements::saveChanges());
    EXPECT_EQ(contentOf(path), document({"much longer than before", "b", "c", "another program's"}));

    const auto third = directory / "third.xml";
    database->resetDb();
    EnhancementsFile::setFilePath(third);
    auto records = twoRecords();
    EXPECT_TRUE(Enhancements::addEnhancements(records));
    EXPECT_TRUE(Enhancements::takeRecord(record(0)));
    EXPECT_TRUE(contentOf(third).ends_with(element("another program's") + element("e") + "</Enhancements>\n"));

    setContent(third, document({"mended by it", "e"}));
    EXPECT_TRUE(Enhancements::saveChanges());
    EnhancementsFile::setFilePath(path);
    EXPECT_TRUE(Enhancements::saveChanges());
    EXPECT_EQ(contentOf(path), document({"another program's", "e"}));
    EXPECT_EQ(fileCount(), 3) << "no copies";
}

TEST_F(ChangesTest, changeNothingWhereverMemoryRunsOut) {
    const std::string before = contentOf(path);
    bool isStored = false;
    for (std::size_t number = 0; !isStored; ++number) {
        auto records = twoRecords();
        allocationsAhead = number;
        try {
            isStored = Enhancements::addEnhancements(records);
        } catch (const std::bad_alloc&) {}
        allocationsAhead = std::numeric_limits<std::size_t>::max();
        const bool areGivenBack = records.size() == 2 && records[0] && records[1];
        EXPECT_NE(isStored, areGivenBack) << number;
        EXPECT_EQ(database->getRecords().size(), isStored ? 5U : 3U) << number;
        EXPECT_EQ(contentOf(path), isStored ? document({"a", "b", "c", "d", "e"}) : before) << number;
    }
    bool areTaken = false;
    for (std::size_t number = 0; !areTaken; ++number) {
        allocationsAhead = number;
        try {
            areTaken = !Enhancements::takeRecords({&record(0), &record(3)}).empty();
        } catch (const std::bad_alloc&) {}
        allocationsAhead = std::numeric_limits<std::size_t>::max();
        EXPECT_EQ(database->getRecords().size(), areTaken ? 3U : 5U) << number;
        EXPECT_TRUE(Enhancements::saveChanges()) << number;
        EXPECT_EQ(contentOf(path), areTaken ? document({"b", "c", "e"}) : document({"a", "b", "c", "d", "e"}))
            << number;
    }
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ChangesTest, keepTheirRecordsWhereverMemoryRunsOutWhileAnotherProgramsAreTakenOver) {
    const std::string other = "  <Other>not of a kind that this program has registered</Other>\n";
    bool isStored = false;
    for (std::size_t number = 0; !isStored; ++number) {
        setContent(path, documentOf(element("a") + element("b") + other + element("c")));
        std::unique_ptr<EnhancementBase> added = std::make_unique<SampleRecord>("Sample");
        allocationsAhead = number;
        try {
            Enhancements::addEnhancement(std::move(added));
        } catch (const std::bad_alloc&) {}
        allocationsAhead = std::numeric_limits<std::size_t>::max();
        isStored = added == nullptr;
        if (isStored) {
            EXPECT_TRUE(Enhancements::takeRecord(record(3)));
        }
        record(0).attributes = {{"Text", std::to_string(number)}};
        EXPECT_TRUE(Enhancements::saveChanges()) << number;
        EXPECT_EQ(contentOf(path), documentOf(element(std::to_string(number)) + element("b") + other + element("c")));
        record(0).attributes = {{"Text", "a"}};
        EXPECT_TRUE(Enhancements::saveChanges()) << number;
    }
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ChangesTest, carryAllOfADocumentOrNothingWhereverMemoryRunsOutWhileItIsRead) {
    bool hasFailed = true;
    for (std::size_t number = 0; hasFailed; ++number) {
        database->resetDb();
        setContent(path, document({}));
        EXPECT_TRUE(Enhancements::saveChanges()) << "nothing is left of the attempt before";
        const std::string text = "of attempt " + std::to_string(number) + ", for which no string has room of its own";
        std::istringstream stream(documentOf("<!--" + text + "-->\n" + element(text) + "<Other>" + text + "</Other>"));
        allocationsAhead = number;
        try {
            EnhancementsFile::read(stream);
        } catch (const std::bad_alloc&) {}
        hasFailed = allocationsAhead > number;
        allocationsAhead = std::numeric_limits<std::size_t>::max();
        EXPECT_TRUE(Enhancements::saveChanges());
        const std::string content = contentOf(path);
        int count = 0;
        for (std::size_t at = 0; (at = content.find(text, at)) != std::string::npos; ++at) {
            ++count;
        }
        EXPECT_TRUE(count == 3 || (count == 0 && hasFailed)) << number << ": " << count;
    }
}

TEST_F(ChangesTest, changeNothingWhereTheFileCannotBeWritten) {
    const auto tryAll = [this] {
        EXPECT_TRUE(Enhancements::takeRecords({&record(1), &record(2)}).empty());
        auto records = twoRecords();
        EXPECT_FALSE(Enhancements::addEnhancements(records));
        EXPECT_EQ(dynamic_cast<SampleRecord&>(*records.at(1)).attributes.front().second.get<std::string>(), "e");
        EXPECT_FALSE(Enhancements::saveChanges());
        EXPECT_EQ(loadedTexts(), "a b c ");
        EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    };
    {
        const auto held = FileLock::tryLock(path, true, FileLock::Access::ReadWrite);
        tryAll();
    }
    const auto write =
        std::exchange(utilities::systemCalls.writeAt, [](utilities::Handle, std::string_view, std::uint64_t,
                                                         std::size_t&) { return std::errc::no_space_on_device; });
    record(2).attributes = {{"Text", "c"}, {"More", "c"}};
    EXPECT_FALSE(Enhancements::saveChanges());
    EXPECT_TRUE(add("not yet written"));
    EXPECT_FALSE(Enhancements::takeRecord(record(3)));
    record(2).attributes = {{"Text", "c"}};
    EXPECT_TRUE(Enhancements::takeRecord(record(3))) << "nothing is to be written";
    EXPECT_TRUE(Enhancements::saveChanges()) << "nothing is to be written";
    EXPECT_FALSE(Enhancements::takeRecord(record(1)));
    auto records = twoRecords();
    EXPECT_FALSE(Enhancements::addEnhancements(records));
    EXPECT_EQ(records.size(), 2U);
    utilities::systemCalls.writeAt = write;
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d"}));
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

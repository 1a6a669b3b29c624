#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;
using utilities::FileLock;

/// Nothing that a user stored is lost by a rewrite of the file.
using ProtectionTest = StoreTest;

TEST_F(ProtectionTest, carriesWhatIsNoRecordAsItStoodAndWhereItStood) {
    const std::string before = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- Ours -->\n<Enhancements by=\"us\">\n";
    const std::string unmade =
        "  <x:Foreign xmlns:x='u'  b=\"&#10;&lt;\" ><!-- c -->&amp;<![CDATA[<]]>\r\n<Sample/></x:Foreign >\n"
        "  <!-- a &lt; comment -->\n"
        "  <Other/>\n";
    const std::string text = "  some &amp; text\n";
    const std::string after = "</Enhancements>\n<?end?>\n";
    const std::string stored = before + unmade + element("a") + element("b") + text + after;
    setContent(path, stored);
    EXPECT_EQ(loadedTexts(), "a b ");
    EXPECT_EQ(contentOf(path), stored);
    EXPECT_TRUE(add("c"));
    const std::string added = before + unmade + element("a") + element("b") + text + element("c") + after;
    EXPECT_EQ(contentOf(path), added);

    const auto database = Enhancements::getOrCreateEnhancementsDb();
    database->resetDb();
    database->resetDb();
    EXPECT_EQ(SampleRecord::destroyed, 3);
    EXPECT_EQ(loadedTexts(), "");
    EXPECT_EQ(contentOf(path), added) << "until the next addition";
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb(), database);
    EXPECT_EQ(contentOf(path), before + unmade + text + element("d") + after);
    EXPECT_TRUE(keptCopies().empty());
}

TEST_F(ProtectionTest, carriesWhatTheLockRefusedDuringTheLoad) {
    setContent(path, document({"a", "b"}));
    auto held = FileLock::tryLock(path, true, FileLock::Access::ReadWrite);
    EXPECT_EQ(loadedTexts(), "");
    EXPECT_EQ(SampleRecord::destroyed, 2);
    held.reset();
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
}

class FailingRecord : public SampleRecord {
public:
    using SampleRecord::SampleRecord;
    void setAttributes(const StringAttributes& list) override {
        SampleRecord::setAttributes(list);
        if (list.back().second == "b") {
            throw std::runtime_error("a kind's own failure");
        }
    }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<FailingRecord>(kind); }
};

TEST_F(ProtectionTest, carriesTheRestOfALoadThatAKindEnded) {
    Factory::registerClass(std::make_unique<FailingRecord>("Sample"));
    setContent(path, document({"a", "b", "c"}));
    EXPECT_THROW(Enhancements::getOrCreateEnhancementsDb(), std::runtime_error);
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d"}));
}

TEST_F(ProtectionTest, keepsACopyOfWhatThisProcessNeitherReadNorWrote) {
    const std::string torn = document({"torn"}).substr(0, 100);
    setContent(path, torn);
    std::filesystem::permissions(path, std::filesystem::perms(0600));
    EXPECT_TRUE(add("a"));
    EXPECT_EQ(contentOf(path), document({"a"}));
    EXPECT_EQ(keptCopies(), std::vector{torn});
    EXPECT_TRUE(add("b"));
    setContent(path, torn);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    EXPECT_EQ(keptCopies(), std::vector{torn}) << "once for the same content";
    setContent(path, document({"x"}));
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(keptCopies(), std::vector({torn, document({"x"})}));
    for (const auto& entry : files()) {
        EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
    }

    path = directory / "other.xml";
    setContent(path, document({"y"}));
    EnhancementsFile::setFilePath(path);
    EXPECT_TRUE(add("e"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d", "e"}));
    EnhancementsFile::setFilePath(path = directory / "store.xml");
    EXPECT_TRUE(add("f"));
    EXPECT_EQ(keptCopies().size(), 2U) << "what it wrote there before is in memory";
}

TEST_F(ProtectionTest, keepsNoCopyInOrdinaryUse) {
    for (const std::string text : {"a", "b", "c"}) {
        inAnotherProcess([&] {
            add(text);
            add(text);
            return loadedTexts();
        });
    }
    EXPECT_TRUE(add("d"));
    setContent(path, contentOf(path)); // the same in another state of the file
    EXPECT_TRUE(add("e"));
    EXPECT_EQ(fileCount(), 1);
    EXPECT_EQ(contentOf(path), document({"a", "a", "b", "b", "c", "c", "d", "e"}));
}

TEST_F(ProtectionTest, keepsNoCopyWhereTheTimeOfTheFileCannotBeSet) {
    setContent(path, document({"a", "b", "c"}));
    utilities::systemCalls.futimens = [](int, const timespec*) { return -1; };
    EXPECT_TRUE(add("d"));
    EXPECT_TRUE(add("e"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d", "e"}));
    EXPECT_TRUE(keptCopies().empty());
}

TEST_F(ProtectionTest, takesNoLinkToTheFileForACopy) {
    setContent(path, "foreign");
    std::filesystem::create_hard_link(path, path.native() + ".kept-link");
    EXPECT_TRUE(add("a"));
    EXPECT_EQ(keptCopies(), std::vector<std::string>({"foreign", document({"a"})}));
}

TEST_F(ProtectionTest, keepsWhatAnotherProcessWroteThatLoadedTheSameFile) {
    setContent(path, document({"base"}));
    EXPECT_EQ(loadedTexts(), "base ");
    for (const std::string text : {"1", "2"}) {
        EXPECT_EQ(inAnotherProcess([&] { return std::to_string(add("other " + text)); }), "1");
        EXPECT_TRUE(add(text));
    }
    EXPECT_EQ(contentOf(path), document({"base", "1", "2"}));
    EXPECT_EQ(keptCopies(), std::vector({document({"base", "other 1"}), document({"base", "1", "other 2"})}));
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

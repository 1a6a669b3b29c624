#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>
#include <utility>

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

/// A record whose kind does something of its own when one with the text b is loaded.
class ActingRecord : public SampleRecord {
public:
    using SampleRecord::SampleRecord;
    static inline std::function<void()> act;

    void setAttributes(const StringAttributes& list) override {
        SampleRecord::setAttributes(list);
        if (list.back().second == "b") {
            act();
        }
    }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<ActingRecord>(kind); }
};

TEST_F(ProtectionTest, carriesTheRestOfALoadThatAKindEnded) {
    Factory::registerClass(std::make_unique<ActingRecord>("Sample"));
    ActingRecord::act = [] { throw std::runtime_error("a kind's own failure"); };
    setContent(path, document({"a", "b", "c"}));
    EXPECT_THROW(Enhancements::getOrCreateEnhancementsDb(), std::runtime_error);
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d"}));
}

TEST_F(ProtectionTest, waitsAtTheEndOfALoadForWhoeverHoldsTheFileForAMoment) {
    Factory::registerClass(std::make_unique<ActingRecord>("Sample"));
    std::jthread holder;
    ActingRecord::act = [&] {
        holder = std::jthread([held = FileLock::tryLock(path, false, FileLock::Access::Read)] {
            ASSERT_TRUE(held);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        });
    };
    setContent(path, documentOf("<Sample><Text>a</Text></Sample><Sample><Text>b</Text></Sample>"));
    EXPECT_EQ(loadedTexts(), "a ");
    EXPECT_EQ(contentOf(path), documentOf(element("a") + "  <Sample><Text>b</Text></Sample>\n"));
    EXPECT_EQ(fileCount(), 1) << "or what somebody writes from now on would be taken for torn";
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
        EXPECT_EQ(entry.status().permissions(), std::filesystem::status(path).permissions()) << entry.path();
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
    utilities::systemCalls.setModificationTime = [](utilities::Handle, std::int64_t) {
        return std::errc::operation_not_permitted;
    };
    EXPECT_TRUE(add("d"));
    EXPECT_TRUE(add("e"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c", "d", "e"}));
    EXPECT_TRUE(keptCopies().empty());
}

TEST_F(ProtectionTest, writesNothingWhereItCannotTellWhichCopiesThereAre) {
    setContent(path, "foreign");
    const auto list = std::exchange(utilities::systemCalls.list, [](const auto& /*directory*/, auto& /*names*/) {
        return std::errc::permission_denied;
    });
    EXPECT_FALSE(add("a"));
    utilities::systemCalls.list = list;
    EXPECT_EQ(contentOf(path), "foreign");
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ProtectionTest, takesNoLinkToTheFileForACopy) {
    setContent(path, "foreign");
    std::filesystem::create_hard_link(path, std::filesystem::path(path) += ".kept-link");
    EXPECT_TRUE(add("a"));
    EXPECT_EQ(keptCopies(), std::vector<std::string>({"foreign", document({"a"})}));
}

TEST_F(ProtectionTest, leavesAFileOfItsOwnLayoutAloneInALoad) {
    setContent(path, documentOf("  <!-- c -->\n" + element("a") + "  <Other/>\n" + element("b")));
    std::filesystem::last_write_time(path, std::filesystem::file_time_type(std::chrono::seconds(1)));
    const auto state = utilities::FileState::of(path);
    EXPECT_EQ(loadedTexts(), "a b ");
    EXPECT_EQ(SampleRecord::written, 3) << "each record at each of the rewrites";
    EXPECT_EQ(utilities::FileState::of(path), state);
    EXPECT_EQ(fileCount(), 1);
}

/// A record whose end is noted as a record of its own.
class LastWord : public SampleRecord {
public:
    using SampleRecord::SampleRecord;
    ~LastWord() override {
        std::unique_ptr<EnhancementBase> record =
            std::make_unique<SampleRecord>("Sample", TypedAttributes{{"Text", "end"}});
        Enhancements::addEnhancement(std::move(record));
    }
    LastWord(const LastWord&) = delete;
    LastWord& operator=(const LastWord&) = delete;
};

TEST_F(ProtectionTest, keepsARecordThatADestructorAdds) {
    EXPECT_TRUE(add("a"));
    Enhancements::addEnhancement(std::make_unique<LastWord>("Sample", TypedAttributes{{"Text", "b"}}));
    EXPECT_TRUE(add("c"));
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    database->resetDb();
    EXPECT_EQ(loadedTexts(), "end ");
    EXPECT_EQ(contentOf(path), document({"end"}));
    Enhancements::addEnhancement(std::make_unique<LastWord>("Sample", TypedAttributes{{"Text", "at exit"}}));
}

TEST_F(ProtectionTest, makesCopiesOfFilesWithLongNames) {
    const std::string name = std::string(124, 'n') + "\u00e9" + std::string(125, 'n') + ".xml";
    for (const std::string foreign : {"foreign", "foreign", "other"}) {
        setContent(directory / name, foreign);
        inAnotherProcess([&] {
            EnhancementsFile::setFilePath(directory / name);
            EXPECT_TRUE(add("a"));
            return std::string();
        });
        EXPECT_EQ(contentOf(directory / name), document({"a"}));
    }
    EXPECT_EQ(fileCount(), 3);
}

TEST_F(ProtectionTest, keepsThePrintedOutOfTheFileWhenTheStandardStreamsAreClosed) {
    inAnotherProcess([this] {
        ::close(STDIN_FILENO);
        ::close(STDERR_FILENO);
        setContent(path, "foreign");
        EXPECT_TRUE(add("a"));
        EnhancementsFile file(*Enhancements::getOrCreateEnhancementsDb());
        EXPECT_TRUE(file.lockFile());
        static_cast<void>(::write(STDERR_FILENO, "printed", 7));
        static_cast<void>(::write(STDIN_FILENO, "printed", 7));
        return std::string();
    });
    EXPECT_EQ(contentOf(path), document({"a"}));
    EXPECT_EQ(keptCopies(), std::vector<std::string>{"foreign"});
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

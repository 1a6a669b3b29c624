#include "Support/CoarseTimes.h"
#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>

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
    utilities::systemCalls.setModificationTime = [](utilities::Handle, std::int64_t) {
        return std::errc::operation_not_permitted;
    };
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

TEST_F(ProtectionTest, leavesTheAdditionsOfAnotherProgramInTheDocument) {
    setContent(path, document({"base"}));
    EXPECT_EQ(loadedTexts(), "base ");
    std::vector<std::string> expected = {"base"};
    for (const std::string text : {"1", "2", "3"}) {
        EXPECT_EQ(inAnotherProcess([&] { return std::to_string(add("other " + text)); }), "1");
        EXPECT_TRUE(add(text));
        expected.insert(expected.end(), {"other " + text, text});
    }
    EXPECT_EQ(contentOf(path), document(expected));
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(ProtectionTest, leavesTheRecordsOfAnotherProgramThatMadeOrMendedTheDocumentInIt) {
    for (const char* const damaged : {"", "<Enhancements>"}) {
        directory.empty();
        inAnotherProcess([&] {
            if (*damaged != '\0') {
                setContent(path, damaged);
            }
            EXPECT_EQ(loadedTexts(), "");
            setContent(path, document({"other"}));
            EXPECT_TRUE(add("a"));
            return std::string();
        });
        EXPECT_EQ(contentOf(path), document({"other", "a"}));
        EXPECT_EQ(fileCount(), 1);
    }
}

TEST_F(ProtectionTest, takesOverWhatAnotherProgramMadeOfTheFileAndKeepsACopyIfARecordIsGoneOrChanged) {
    struct Case {
        std::string edited;
        std::string written; // with another addition
        bool isKept;
    };
    const std::string a = element("a");
    const std::string b = element("b");
    const std::string c = element("c");
    const std::string d = element("d");
    const std::string other = "  <Other x=\"1\"/>\n";
    const std::string comment = "  <!-- between -->\n";
    const Case cases[] = {
        {documentOf(a + b + c), documentOf(a + b + c + d), false},
        {documentOf(other + a + comment + b + element("x") + c + other), // in its place
         documentOf(other + a + comment + b + element("x") + c + other + d), false},
        {documentOf(a + a + b + c), documentOf(a + a + b + c + d), false},
        {documentOf(c + a + b), documentOf(a + b + c + d), false}, // moved
        {documentOf(a + c), documentOf(a + b + c + d), true},
        {documentOf(a + element("B") + c + other), documentOf(a + b + c + other + d), true},
        {documentOf(a + other + element("B") + element("y")), documentOf(a + other + b + c + d), true},
        {"<Enhancements by='them'/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements by=\"them\">\n" + a + b + c + d +
             "</Enhancements>\n",
         true},
        {"<Other/>", documentOf(a + b + c + d), true},
        {"", documentOf(a + b + c + d), false},
    };
    for (const auto& [edited, written, isKept] : cases) {
        directory.empty();
        setContent(path, documentOf(a + b + c));
        inAnotherProcess([&, &changed = edited] {
            EXPECT_EQ(loadedTexts(), "a b c ");
            setContent(path, changed);
            EXPECT_TRUE(add("d"));
            return std::string();
        });
        EXPECT_EQ(contentOf(path), written);
        EXPECT_EQ(keptCopies(), isKept ? std::vector{edited} : std::vector<std::string>());
    }
}

TEST_F(ProtectionTest, takesNoElementOfOthersForARecordThatChangedBesideIt) {
    const std::string other = element("other");
    const std::string changed = documentOf(other + element("A") + other + element("b"));
    setContent(path, document({"a"}));
    EXPECT_EQ(loadedTexts(), "a ");
    setContent(path, documentOf(other + element("a") + other));
    EXPECT_TRUE(add("b"));
    setContent(path, changed);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"other", "a", "other", "b", "c"}));
    EXPECT_EQ(keptCopies(), std::vector{changed});
}

TEST_F(ProtectionTest, takesNoNewElementOfAnotherOwnerForARecordThatIsGone) {
    const std::string added = "  <Sample>\n    <OwnerId>1jXyBr6EAquR0PHYXIrQ4_</OwnerId>\n  </Sample>\n";
    const std::string edited = documentOf(element("a") + added);
    setContent(path, document({"a", "b"}));
    EXPECT_EQ(loadedTexts(), "a b ");
    setContent(path, edited);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), documentOf(element("a") + added + element("b") + element("c")));
    EXPECT_EQ(keptCopies(), std::vector{edited});
}

TEST_F(ProtectionTest, takesNothingOverForGoodWhereTheWriteFails) {
    const auto other = directory / "other.xml";
    static bool isFull = false;
    static const auto realWrite = utilities::systemCalls.writeAt;
    utilities::systemCalls.writeAt = [](utilities::Handle file, std::string_view content, std::uint64_t position,
                                        std::size_t& written) {
        return isFull ? std::errc::no_space_on_device : realWrite(file, content, position, written);
    };
    const auto tryInVain = [] {
        std::vector<std::unique_ptr<EnhancementBase>> records;
        records.push_back(std::make_unique<SampleRecord>("Sample"));
        isFull = true;
        EXPECT_FALSE(Enhancements::addEnhancements(records));
        isFull = false;
    };
    EXPECT_TRUE(add("a"));
    setContent(path, document({"a", "of the first"}));
    EXPECT_TRUE(add("b"));
    EnhancementsFile::setFilePath(other);
    EXPECT_TRUE(add("c"));
    setContent(other, documentOf(element("a") + element("b") + element("c") + element("of the second")));
    tryInVain();
    EnhancementsFile::setFilePath(path);
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(contentOf(path), document({"a", "of the first", "b", "c", "d"}));

    setContent(path, document({"a", "b", "c", "d"}));
    tryInVain();
    setContent(path, document({"a", "of the first", "b", "c", "d"}));
    EXPECT_TRUE(add("e"));
    EXPECT_EQ(contentOf(path), document({"a", "of the first", "b", "c", "d", "e"}));
    EXPECT_EQ(keptCopies(), std::vector<std::string>());
}

TEST_F(ProtectionTest, keepsItsOwnOfEqualElementsWhenAnotherProgramRemovesOne) {
    setContent(path, document({"x"}));
    EXPECT_EQ(loadedTexts(), "x ");
    setContent(path, document({"same", "x"}));
    EXPECT_TRUE(add("same"));
    setContent(path, document({"x", "same", "new"}));
    EXPECT_TRUE(add("b"));
    EXPECT_EQ(contentOf(path), document({"x", "same", "new", "b"}));
    setContent(path, document({"same", "x", "new", "b"}));
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(keptCopies(), std::vector<std::string>());
}

TEST_F(ProtectionTest, doesNotTakeItsOwnWritingForForeignWhenTheTimesOfTheFileChange) {
    EXPECT_TRUE(add("0"));
    SampleRecord& edited = record(0);
    const std::function<void()> changes[] = {
        [this] { std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now()); },
        [this] { std::filesystem::permissions(path, std::filesystem::perms(0640)); },
        [this] { std::filesystem::create_hard_link(path, directory / "link"); },
        [this] { std::filesystem::remove(directory / "link"); },
        [this] {
            std::filesystem::copy(path, directory / "new");
            std::filesystem::rename(directory / "new", path);
        },
    };
    std::vector<std::string> texts = {"0"};
    for (const auto& change : changes) {
        change();
        texts.push_back(std::to_string(texts.size()));
        edited.attributes = {{"Text", texts.front() = "edited " + texts.back()}};
        EXPECT_TRUE(add(texts.back()));
        EXPECT_EQ(contentOf(path), document(texts));
        EXPECT_TRUE(keptCopies().empty());
    }
}

TEST_F(ProtectionTest, noticesAnEditOfTheSameSizeWhoseTimesTellNothing) {
    const CoarseTimes coarse;
    EXPECT_TRUE(add("a"));
    const auto time = std::filesystem::last_write_time(path);
    setContent(path, document({"b"}));
    std::filesystem::last_write_time(path, time);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "c"}));
    EXPECT_EQ(keptCopies(), std::vector{document({"b"})});
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

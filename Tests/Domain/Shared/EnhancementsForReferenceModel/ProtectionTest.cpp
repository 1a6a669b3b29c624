#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using tests::contentOf;
using tests::SampleRecord;
using tests::setContent;
using utilities::FileLock;

/// Nothing that a user stored is lost by a rewrite of the file.
class ProtectionTest : public tests::StoreTest {
protected:
    static std::string indented(const std::string& element) { return "  " + element + "\n"; }
};

const std::string foreign =
    "<x:Foreign xmlns:x='u'  b=\"&#10;&lt;\" ><!-- c -->&amp;<![CDATA[<]]>\r\n<Sample/></x:Foreign >";

TEST_F(ProtectionTest, carriesWhatIsNoRecordAsItStoodAndWhereItStood) {
    const std::string before = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- Ours -->\n<Enhancements by=\"us\">\n";
    const std::string after = "</Enhancements>\n<?end?>\n";
    const std::string unmade = indented(foreign) + indented("<!-- a &lt; comment -->") + indented("<Other/>");
    const std::string stored = before + unmade + element("a") + element("b") + indented("some &amp; text") + after;
    setContent(path, stored);
    EXPECT_EQ(loadedTexts(), std::vector<std::string>({"a", "b"}));
    EXPECT_EQ(contentOf(path), stored);
    EXPECT_TRUE(add("c"));
    const std::string added =
        before + unmade + element("a") + element("b") + indented("some &amp; text") + element("c") + after;
    EXPECT_EQ(contentOf(path), added);

    Enhancements::getOrCreateEnhancementsDb()->resetDb();
    EXPECT_TRUE(add("d"));
    EXPECT_EQ(contentOf(path), before + unmade + indented("some &amp; text") + element("d") + after);
    EXPECT_TRUE(inAnotherProcess([] {
        Factory::registerClass(std::make_unique<SampleRecord>("Other"));
        *Enhancements::getOrCreateEnhancementsDb() = Enhancements();
        return EnhancementsFile::readFile() && Enhancements::getOrCreateEnhancementsDb()->getRecords().size() == 2;
    }));
    EXPECT_TRUE(keptCopies().empty());
}

TEST_F(ProtectionTest, carriesWhatTheLockRefusedDuringTheLoad) {
    setContent(path, document({"a", "b"}));
    auto held = FileLock::tryLock(path, true, FileLock::Access::ReadWrite);
    EXPECT_TRUE(loadedTexts().empty());
    held.reset();
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
}

class FailingRecord : public SampleRecord {
public:
    using SampleRecord::SampleRecord;
    void setAttributes(const tests::StringAttributes& list) override {
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
    for (const auto& entry : std::filesystem::directory_iterator(path.parent_path())) {
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
        EXPECT_TRUE(inAnotherProcess([&] { return add(text) && add(text); }));
    }
    EXPECT_TRUE(inAnotherProcess([this] {
        add("d");
        // The same content in another state of the file.
        setContent(path, contentOf(path));
        return add("e");
    }));
    const auto entries = std::filesystem::directory_iterator(path.parent_path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
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

TEST_F(ProtectionTest, refusesARecordWhenTheCopyCannotBeMade) {
    setContent(path, "foreign");
    std::filesystem::create_hard_link(path, path.native() + ".kept-link");
    const auto usual = std::exchange(utilities::systemCalls.fsync, [](int) { return -1; });
    EXPECT_FALSE(add("a"));
    EXPECT_EQ(contentOf(path), "foreign");
    EXPECT_TRUE(FileLock::tryLock(path, true, FileLock::Access::ReadWrite)) << "the lock is given up";
    utilities::systemCalls.fsync = usual;
    std::filesystem::remove(path.native() + ".kept-link");
    EXPECT_TRUE(add("b"));
    EXPECT_EQ(contentOf(path), document({"b"}));
    EXPECT_EQ(keptCopies(), std::vector<std::string>{"foreign"});
}

TEST_F(ProtectionTest, leavesTheOldDocumentWholeWhenThereIsNoSpaceForTheNewOne) {
    EXPECT_TRUE(add("a"));
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlim_t usual = std::exchange(limit.rlim_cur, document({"a"}).size() + 20);
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_TRUE(add("b"));
    EXPECT_EQ(contentOf(path), document({"a"}));
    limit.rlim_cur = usual;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"a", "b", "c"}));
    EXPECT_TRUE(keptCopies().empty());
}

TEST_F(ProtectionTest, keepsWhatTwoProcessesThatLoadedTheSameFileOverwriteOfEachOther) {
    setContent(path, document({"base"}));
    EXPECT_EQ(loadedTexts(), std::vector<std::string>{"base"});
    int turns[2];
    int results[2];
    ASSERT_TRUE(::pipe(turns) == 0 && ::pipe(results) == 0);
    const pid_t child = ::fork();
    if (child == 0) {
        char turn = 0;
        while (::read(turns[0], &turn, 1) == 1 && add(std::string("child ") + turn) &&
               ::write(results[1], &turn, 1) == 1) {}
        ::_exit(0);
    }
    ::close(results[1]);
    for (char turn : {'1', '2'}) {
        EXPECT_TRUE(add(std::string("parent ") + turn));
        ASSERT_EQ(::write(turns[1], &turn, 1), 1);
        ASSERT_EQ(::read(results[0], &turn, 1), 1);
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(contentOf(path), document({"base", "child 1", "child 2"}));
    EXPECT_EQ(keptCopies(), std::vector({document({"base", "parent 1"}), document({"base", "child 1"}),
                                         document({"base", "parent 1", "parent 2"})}));
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

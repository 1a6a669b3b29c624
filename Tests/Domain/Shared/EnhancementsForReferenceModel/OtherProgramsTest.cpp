#include "Support/CoarseTimes.h"
#include "Support/StoreTest.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <functional>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;

/// What other programs make of the file stays in it, or in a copy, whatever this one writes.
using OtherProgramsTest = StoreTest;

TEST_F(OtherProgramsTest, leavesTheAdditionsOfAnotherProgramInTheDocument) {
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

TEST_F(OtherProgramsTest, leavesTheRecordsOfAnotherProgramThatMadeOrMendedTheDocumentInIt) {
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

TEST_F(OtherProgramsTest, takesOverWhatAnotherProgramMadeOfTheFileAndKeepsACopyIfARecordIsGoneOrChanged) {
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

TEST_F(OtherProgramsTest, takesNoElementOfOthersForARecordThatChangedBesideIt) {
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

TEST_F(OtherProgramsTest, takesNoNewElementOfAnotherOwnerForARecordThatIsGone) {
    const std::string added = "  <Sample>\n    <OwnerId>1jXyBr6EAquR0PHYXIrQ4_</OwnerId>\n  </Sample>\n";
    const std::string edited = documentOf(element("a") + added);
    setContent(path, document({"a", "b"}));
    EXPECT_EQ(loadedTexts(), "a b ");
    setContent(path, edited);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), documentOf(element("a") + added + element("b") + element("c")));
    EXPECT_EQ(keptCopies(), std::vector{edited});
}

TEST_F(OtherProgramsTest, takesNothingOverForGoodWhereTheWriteFails) {
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

TEST_F(OtherProgramsTest, keepsItsOwnOfEqualElementsWhenAnotherProgramRemovesOne) {
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

TEST_F(OtherProgramsTest, doesNotTakeItsOwnWritingForForeignWhenTheTimesOfTheFileChange) {
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

class SameSizeTest : public OtherProgramsTest {
protected:
    /// Another program makes b of a, and gives the file the time back that it had.
    void noticesAnEdit() {
        EXPECT_TRUE(add("a"));
        const auto time = std::filesystem::last_write_time(path);
        setContent(path, document({"b"}));
        std::filesystem::last_write_time(path, time);
        EXPECT_TRUE(add("c"));
        EXPECT_EQ(contentOf(path), document({"a", "c"}));
        EXPECT_EQ(keptCopies(), std::vector{document({"b"})});
    }
};

TEST_F(SameSizeTest, isNoticedByTheTimeOfTheChangeAlone) {
    noticesAnEdit();
}

TEST_F(SameSizeTest, isNoticedWhereTimesTellNothing) {
    const CoarseTimes coarse;
    noticesAnEdit();
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

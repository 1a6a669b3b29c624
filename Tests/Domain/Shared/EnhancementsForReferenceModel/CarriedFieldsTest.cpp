#include "Support/StoreTest.h"

#include <gtest/gtest.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;

/// A kind of an older host: it knows a text and whether it is resolved, and leaves all else.
class OlderRecord : public EnhancementBase {
public:
    std::string getEntityName() const override { return "Sample"; }
    TypedAttributes getAttributes() const override {
        TypedAttributes attributes = {{"Text", text}, {"Resolved", isResolved}};
        if (!author.empty()) {
            attributes.emplace_back("Author", author);
        }
        return attributes;
    }
    void setAttributes(const StringAttributes& list) override {
        EnhancementBase::setAttributes(list);
        for (const auto& [name, value] : list) {
            text = name == "Text" ? value : text;
            isResolved = name == "Resolved" ? value == "true" : isResolved;
        }
    }
    std::unique_ptr<EnhancementBase> createInstance() const override { return std::make_unique<OlderRecord>(); }

    std::string text;
    bool isResolved = false;
    std::string author; // which it can't read
};

class CarriedFieldsTest : public StoreTest {
protected:
    CarriedFieldsTest() { Factory::registerClass(std::make_unique<OlderRecord>()); }

    static std::string sample(const std::string& attributes, const std::string& fields) {
        return documentOf("  <Sample" + attributes + ">\n    <OwnerId>0000000000000000000000</OwnerId>\n" + fields +
                          "  </Sample>\n");
    }
};

const std::string newerFields = "    <Author b=\"1\"><!-- c -->Ann</Author>\n    <!-- on Tuesday -->\n    <Author/>\n"
                                "    <Resolution>\n  as it stood </Resolution>\n";

TEST_F(CarriedFieldsTest, survivesAKindThatDoesNotKnowThem) {
    struct Case {
        std::string stored;
        std::string loaded;
        bool isCopied = false;
    };
    const std::string own = "    <Text>a</Text>\n    <Resolved>true</Resolved>\n";
    const std::string plain = sample("", own);
    const Case cases[] = {
        {plain, plain},
        {sample(" by=\"us\"", newerFields + own), sample(" by=\"us\"", newerFields + own)},
        {sample("", own + newerFields), sample("", newerFields + own)},
        {sample("", "    <Text>a</Text>\n    <!-- c -->\n    <New/>\n    <Resolved>true</Resolved>\n"),
         sample("", "    <!-- c -->\n    <New/>\n" + own)},
        {sample("", "<Text><![CDATA[a]]></Text><Resolved>&#116;rue</Resolved>"), plain},
        {sample("", "stray<Text>a</Text><Resolved>true</Resolved>"), sample("", "    stray\n" + own)},
        {sample("", "    <Text/>\n    <Resolved/>\n"),
         sample("", "    <Text><![CDATA[]]></Text>\n    <Resolved>false</Resolved>\n")},
        {sample("", "    <Text>a</Text>\n    <Resolved>yes</Resolved>\n"),
         sample("", "    <Text>a</Text>\n    <Resolved>false</Resolved>\n"), true},
        {sample("", "    <Text lang=\"en\">a</Text>\n    <Resolved>true</Resolved>\n"), plain, true},
        {sample("", "    <Text>a<!-- c --></Text>\n    <Resolved>true</Resolved>\n"), plain, true},
        {sample("", "    <Text>b</Text>\n" + own), plain, true},
        {sample("", "    <OwnerId>0000000000000000000000</OwnerId>\n" + own), plain, true},
        {documentOf("<Sample><OwnerId>nobody</OwnerId>" + own + "</Sample>"), plain, true},
        {documentOf("<Sample>" + own + "</Sample>"), plain},
    };
    for (const auto& [stored, loaded, isCopied] : cases) {
        directory.empty();
        setContent(path, stored);
        for (int start = 0; start < 2; ++start) {
            inAnotherProcess(
                [] { return std::to_string(Enhancements::getOrCreateEnhancementsDb()->getRecords().size()); });
            EXPECT_EQ(contentOf(path), loaded);
            EXPECT_EQ(keptCopies(), isCopied ? std::vector{stored} : std::vector<std::string>()) << stored;
        }
    }
}

TEST_F(CarriedFieldsTest, goWhenTheRecordGivesTheirNameItselfAndWithTheRecord) {
    const std::string own = "    <Text>a</Text>\n    <Resolved>true</Resolved>\n";
    setContent(path, sample("", newerFields + own));
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    dynamic_cast<OlderRecord&>(*database->getRecords().front()).author = "Ben";
    Factory::registerClass(std::make_unique<SampleRecord>("Sample"));
    EXPECT_TRUE(add("b"));
    std::string written = sample("", "    <!-- on Tuesday -->\n    <Resolution>\n  as it stood </Resolution>\n" + own +
                                         "    <Author>Ben</Author>\n");
    written.insert(written.find("</Enhancements>"), element("b"));
    EXPECT_EQ(contentOf(path), written);
    database->resetDb();
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"c"}));
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(CarriedFieldsTest, keepOneCopyALoadOfTheDocumentAsItWasRead) {
    const std::string altered = "<Sample><Resolved>yes</Resolved></Sample>";
    const std::string stored = documentOf(element("a") + altered + element("b") + altered);
    setContent(path, stored);
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb()->getRecords().size(), 4U);
    EXPECT_EQ(keptCopies(), std::vector{stored});
    EXPECT_EQ(fileCount(), 2);
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

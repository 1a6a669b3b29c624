#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Support/ReportTest.h"
#include "Support/SampleRecord.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sstream>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using tests::contentOf;
using tests::Report;
using tests::SampleRecord;
using tests::setContent;

Report reportOf(const std::string& operation, std::uint32_t line, const std::string& message) {
    return {message, "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::" + operation,
            "Source/Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile", line};
}

class EnhancementsFileTest : public tests::ReportTest {
protected:
    EnhancementsFileTest() {
        Factory::registerClass(std::make_unique<SampleRecord>("SampleNote"));
        Factory::registerClass(std::make_unique<tests::SealedRecord>());
        EnhancementsFile::setFilePath(path);
    }

    tests::TemporaryDirectory directory;
    std::filesystem::path path = directory / "a/b/c/store.xml";
    Enhancements enhancements;
};

const std::string emptyDocument = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements/>\n";

TEST_F(EnhancementsFileTest, writesTextsNumbersAndTruthValuesAndLeavesOtherAttributesEmpty) {
    auto record = std::make_unique<SampleRecord>("SampleNote",
                                                 tests::TypedAttributes{{"Width", -250},
                                                                        {"Visible", true},
                                                                        {"Label", "Sample A"},
                                                                        {"Offset", 2.5},
                                                                        {"None", {}},
                                                                        {"OwnerId", ""},
                                                                        {"Maybe", std::optional<std::string>("text")}});
    record->ownerId.boSet("1xS3BCk291UvhgP2dvNMKI");
    Enhancements::addEnhancement(std::move(record));
    EXPECT_EQ(contentOf(path), R"(<?xml version="1.0" encoding="UTF-8"?>
<Enhancements>
  <SampleNote>
    <OwnerId>1xS3BCk291UvhgP2dvNMKI</OwnerId>
    <Width>-250</Width>
    <Visible>true</Visible>
    <Label>Sample A</Label>
    <Offset/>
    <None/>
    <OwnerId><![CDATA[]]></OwnerId>
    <Maybe/>
  </SampleNote>
</Enhancements>
)");
}

TEST_F(EnhancementsFileTest, reportsAStreamThatIsNotGoodAndLeavesItAlone) {
    std::stringstream stream("<Enhancements/>");
    stream.setstate(std::ios_base::failbit);
    EnhancementsFile file(enhancements);
    EXPECT_FALSE(file.write(stream));
    EXPECT_EQ(takeReports(), std::vector{reportOf("write", 108, "Stream must be open")});
    EXPECT_FALSE(EnhancementsFile::read(stream));
    EXPECT_EQ(takeReports(), std::vector({reportOf("read", 66, "Stream must be open"),
                                          reportOf("read", 67, "You have got an empty file without header")}));
    EXPECT_EQ(stream.str(), "<Enhancements/>");
}

TEST_F(EnhancementsFileTest, makesTheFileAndItsDirectoriesWhenItIsLockedFirst) {
    {
        EnhancementsFile file(enhancements);
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_TRUE(file.lockFile());
        EXPECT_EQ(contentOf(path), emptyDocument);
        EXPECT_FALSE(EnhancementsFile(enhancements).lockFile());
        setContent(path, std::string(1000, ' '));
    }
    EXPECT_EQ(contentOf(path), emptyDocument) << "written whole, without the rest of older content";
}

TEST_F(EnhancementsFileTest, leavesAnExistingEmptyFileAloneUntilItWrites) {
    path = directory / "store.xml";
    EnhancementsFile::setFilePath(path);
    setContent(path, "");
    {
        EnhancementsFile file(enhancements);
        EXPECT_TRUE(file.lockFile());
        EXPECT_EQ(contentOf(path), "");
    }
    EXPECT_EQ(contentOf(path), emptyDocument);
}

TEST_F(EnhancementsFileTest, reportsASecondLockOfTheSameGuardAndLosesTheFirst) {
    EnhancementsFile file(enhancements);
    EXPECT_TRUE(file.lockFile());
    EXPECT_FALSE(file.lockFile()) << "the attempt runs while the lock is held";
    EXPECT_EQ(takeReports(), std::vector{reportOf("lockFile", 24, "File is already locked")});
    EXPECT_EQ(contentOf(path), emptyDocument);
    EXPECT_TRUE(EnhancementsFile(enhancements).lockFile());
}

TEST_F(EnhancementsFileTest, reportsThatItCannotWriteWithoutTheLock) {
    EnhancementsFile file(enhancements);
    file.writeFile();
    EXPECT_EQ(takeReports(), std::vector{reportOf("writeFile", 53, "Not able to lock file before writing")});
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(EnhancementsFileTest, takesABareNameRelativeToTheCurrentDirectory) {
    std::filesystem::current_path(directory / ".");
    EnhancementsFile::setFilePath("store.xml");
    EXPECT_TRUE(EnhancementsFile(enhancements).lockFile());
    EXPECT_EQ(contentOf(directory / "store.xml"), emptyDocument);
}

struct ReadCase {
    std::string content;
    bool result;
    std::vector<tests::StringAttributes> received;
    std::vector<Report> reports;
};

TEST_F(EnhancementsFileTest, readsTheRecordsOfRegisteredKindsAndNothingElse) {
    const Report isEmpty = reportOf("read", 67, "You have got an empty file without header");
    const Report otherRoot = reportOf("read", 76, "Error in Enhancements xml file.");
    const ReadCase cases[] = {
        {"", false, {}, {isEmpty}},
        {" \n ", false, {}, {}},
        {"no document", false, {}, {}},
        {"<Enhancements>", false, {}, {}},
        {"<Enhancements/><Enhancements/>", false, {}, {}},
        {"<Enhancements><SampleNote/></Enhancements>x", false, {}, {}},
        {"<Other><SampleNote/></Other>", false, {}, {otherRoot}},
        {"<enhancements/>", false, {}, {otherRoot}},
        {"<Enhancements/>", true, {}, {}},
        {"<Enhancements> <!-- c --> text <Unknown><A>1</A></Unknown><Sealed/> </Enhancements>", true, {}, {}},
        {"<Enhancements><SampleNote/></Enhancements>", true, {{}}, {}},
        // clang-format off
        {"<Enhancements><SampleNote><A>1</A></SampleNote>\n<SampleNote><A>1</A></SampleNote></Enhancements>", true,
         {{{"A", "1"}}, {{"A", "1"}}}, {}},
        {"<Enhancements><SampleNote> x <A> 1 </A><!-- c --><Empty/><OwnerId>o</OwnerId><OwnerId>p</OwnerId>"
         "<B>1<C/>2</B><D><E>3</E></D><F><!--c-->4</F></SampleNote></Enhancements>", true,
         {{{"A", " 1 "}, {"OwnerId", "o"}, {"OwnerId", "p"}, {"B", "1"}, {"D", ""}, {"F", "c"}}}, {}},
        {"\xEF\xBB\xBF<!DOCTYPE Enhancements [<!ENTITY e 'x'>]>"
         "<Enhancements><SampleNote><A>&e;</A></SampleNote></Enhancements>", true, {{{"A", "x"}}}, {}},
        // clang-format on
    };
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    for (const auto& [content, result, received, expectedReports] : cases) {
        std::filesystem::remove(path);
        std::istringstream stream(content);
        EXPECT_EQ(EnhancementsFile::read(stream), result) << content;
        EXPECT_EQ(takeReports(), expectedReports) << content;
        std::vector<tests::StringAttributes> actual;
        for (const auto& record : database->getRecords()) {
            actual.push_back(dynamic_cast<const SampleRecord&>(*record).received);
        }
        EXPECT_EQ(actual, received) << content;
        EXPECT_EQ(std::filesystem::exists(path), !received.empty()) << content;
        database->resetDb();
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

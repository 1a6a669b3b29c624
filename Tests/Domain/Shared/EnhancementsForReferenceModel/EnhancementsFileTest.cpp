#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"

#include "Support/StoreTest.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;

std::string reportOf(const std::string& operation, int line, const std::string& message) {
    return "Source/Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile:" + std::to_string(line) +
           ": orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::" + operation + ": " + message;
}

class EnhancementsFileTest : public StoreTest {
protected:
    EnhancementsFileTest() {
        Factory::registerClass(std::make_unique<SealedRecord>());
        EnhancementsFile::setFilePath(path = directory / "a/b/c/store.xml");
    }

    Enhancements enhancements;
};

const std::string emptyDocument = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements/>\n";

TEST_F(EnhancementsFileTest, writesTextsNumbersAndTruthValuesAndLeavesOtherAttributesEmpty) {
    auto record =
        std::make_unique<SampleRecord>("Sample", TypedAttributes{{"Width", -250},
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
  <Sample>
    <OwnerId>1xS3BCk291UvhgP2dvNMKI</OwnerId>
    <Width>-250</Width>
    <Visible>true</Visible>
    <Label>Sample A</Label>
    <Offset/>
    <None/>
    <OwnerId><![CDATA[]]></OwnerId>
    <Maybe/>
  </Sample>
</Enhancements>
)");
}

TEST_F(EnhancementsFileTest, readsNothingFromAStreamThatFailsOnTheWay) {
    std::ifstream stream(directory / "."); // a directory can be opened
    EXPECT_FALSE(EnhancementsFile::read(stream));
}

TEST_F(EnhancementsFileTest, reportsAStreamThatIsNotGoodAndLeavesItAlone) {
    std::stringstream stream("<Enhancements/>");
    stream.setstate(std::ios_base::failbit);
    EnhancementsFile file(enhancements);
    EXPECT_FALSE(file.write(stream));
    EXPECT_EQ(takeReports(), Reports{reportOf("write", 108, "Stream must be open")});
    EXPECT_FALSE(EnhancementsFile::read(stream));
    EXPECT_EQ(takeReports(), Reports({reportOf("read", 66, "Stream must be open"),
                                      reportOf("read", 67, "You have got an empty file without header")}));
    EXPECT_EQ(stream.str(), "<Enhancements/>");
}

TEST_F(EnhancementsFileTest, goesOnAfterAStreamThatThrows) {
    EXPECT_TRUE(add("a"));
    record(0).attributes = {{"Text", "b"}};
    std::ofstream stream(directory / "full");
    stream.rdbuf()->close(); // takes nothing
    stream.exceptions(std::ios_base::badbit);
    const EnhancementsFile file(*Enhancements::getOrCreateEnhancementsDb());
    EXPECT_THROW(file.write(stream), std::ios_base::failure);
    EXPECT_TRUE(add("c"));
    EXPECT_EQ(contentOf(path), document({"b", "c"}));
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
    std::filesystem::current_path(directory / ".");
    EnhancementsFile::setFilePath("store.xml");
    EXPECT_TRUE(EnhancementsFile(enhancements).lockFile());
    EXPECT_EQ(contentOf(directory / "store.xml"), emptyDocument);
    std::filesystem::current_path(std::filesystem::temp_directory_path()); // or the directory stays on Windows
}

TEST_F(EnhancementsFileTest, leavesAnExistingEmptyFileAloneUntilItWrites) {
    EnhancementsFile::setFilePath(path = directory / "store.xml");
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
    EXPECT_EQ(takeReports(), Reports{reportOf("lockFile", 24, "File is already locked")});
    EXPECT_EQ(contentOf(path), emptyDocument);
    EXPECT_TRUE(EnhancementsFile(enhancements).lockFile());
}

TEST_F(EnhancementsFileTest, reportsThatItCannotWriteWithoutTheLock) {
    EnhancementsFile file(enhancements);
    file.writeFile();
    EXPECT_EQ(takeReports(), Reports{reportOf("writeFile", 53, "Not able to lock file before writing")});
    EXPECT_FALSE(std::filesystem::exists(path));
}

struct ReadCase {
    std::string content;
    std::optional<std::string> records; ///< With the attributes that each received; nothing if the content is refused.
    Reports reports = {};
};

TEST_F(EnhancementsFileTest, readsTheRecordsOfRegisteredKindsAndNothingElse) {
    const Reports isEmpty = {reportOf("read", 67, "You have got an empty file without header")};
    const Reports otherRoot = {reportOf("read", 76, "Error in Enhancements xml file.")};
    const ReadCase cases[] = {
        {"", {}, isEmpty},
        {" \n ", {}},
        {"<Enhancements><Sample/></Enhancements>x", {}},
        {"<Other><Sample/></Other>", {}, otherRoot},
        {"<enhancements/>", {}, otherRoot},
        {"<Enhancements/>", ""},
        {"<Enhancements> <!-- c --> text <Unknown><A>1</A></Unknown><Sealed/> </Enhancements>", ""},
        {"<Enhancements><Sample/>\n<Sample><A>1</A></Sample><Sample/></Enhancements>", "Sample;Sample A=1;Sample;"},
        {"<Enhancements><Sample> x <A> 1 </A><!-- c --><Empty/><OwnerId>o</OwnerId><OwnerId>p</OwnerId>"
         "<B>1<C/>2</B><D><E>3</E></D><F><!--c-->4</F></Sample></Enhancements>",
         "Sample A= 1  OwnerId=o OwnerId=p B=1 D= F=c;"},
        {"\xEF\xBB\xBF<!DOCTYPE Enhancements [<!ENTITY e 'x'>]>"
         "<Enhancements><Sample><A>&e;</A></Sample></Enhancements>",
         "Sample A=x;"},
    };
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    for (const auto& [content, expected, expectedReports] : cases) {
        std::filesystem::remove(path);
        std::istringstream stream(content);
        EXPECT_EQ(EnhancementsFile::read(stream), expected.has_value()) << content;
        EXPECT_EQ(takeReports(), expectedReports) << content;
        std::string records;
        for (const auto& record : database->getRecords()) {
            records += record->getEntityName();
            for (const auto& [name, text] : dynamic_cast<const SampleRecord&>(*record).received) {
                records += ' ' + name + '=' + text;
            }
            records += ';';
        }
        EXPECT_EQ(records, expected.value_or("")) << content;
        EXPECT_EQ(std::filesystem::exists(path), !records.empty()) << content;
        database->resetDb();
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

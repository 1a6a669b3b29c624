#include "Annotate/CommandTest.h"
#include "FoundationClasses/IfcClass.h"

#include <regex>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;

class AnnotateTest : public CommandTest {};

TEST_F(AnnotateTest, listsEveryObjectDefinitionOfTheFile) {
    for (const std::string& model : models()) {
        std::size_t expected = 0;
        std::ifstream stream(model);
        for (std::string line; std::getline(stream, line);) {
            const std::size_t begin = line.find('=') + 1;
            const auto* ifcClass = orv::fc::IfcClass::find(line.substr(begin, line.find('(') - begin));
            expected += line.starts_with('#') && ifcClass != nullptr && ifcClass->isObjectDefinition() ? 1U : 0U;
        }
        EXPECT_GT(expected, 20U);
        EXPECT_EQ(lineCount(run({model, "objects"}).output), expected) << model;
    }
}

TEST_F(AnnotateTest, filtersObjectsByClassWithThoseBelowItAndByName) {
    const std::string walls = run({HOUSE, "objects", "--class", "ifcwall"}).output;
    const std::string standardWalls = run({HOUSE, "objects", "--class", "IfcWallStandardCase"}).output;
    EXPECT_GT(lineCount(walls), lineCount(standardWalls));
    EXPECT_GT(lineCount(standardWalls), 0U);
    EXPECT_NE(run({HOUSE, "objects", "--match", "OWNER'S"}).output.find("Owner's"), std::string::npos);
    EXPECT_EQ(run({HOUSE, "objects", "--match", "no such name"}).output, "");
}

TEST_F(AnnotateTest, showsWhatTheModelHoldsOfObjects) {
    const std::string door = "2b_TX4KeSUsSwjWBToxytC";
    EXPECT_EQ(run({HOUSE, "show", door, "0oyPuvBhUoe4baqNuQzewi"}).output,
              "IfcDoor Front door\nGlobalId: " + door +
                  "\nPlace: IfcSite Lake road 7 > IfcBuilding House > IfcBuildingStorey Ground floor\n"
                  "Type: IfcDoorType Outer door 1000 x 2100, 3WoaolqSF_8sQcFSa6DELN\n"
                  "Pset_DoorCommon\tReference\tOuter door 1000 x 2100\t\t\n"
                  "Pset_DoorCommon\tStatus\tNEW\t\t\nPset_DoorCommon\tIsExternal\ttrue\t\t\n"
                  "Pset_DoorCommon\tFireExit\ttrue\t\t\n"
                  "Pset_DoorCommon\tThermalTransmittance\t1.3\tW/(m²·K)\t\n\n"
                  "IfcBuildingStorey Upper floor\nGlobalId: 0oyPuvBhUoe4baqNuQzewi\n"
                  "Place: IfcSite Lake road 7 > IfcBuilding House\n");
    expectRefusal({HOUSE, "show", door, "x"}, 1, "x isn't a GlobalId");
    expectRefusal({HOUSE, "show", door, "0aaaaaaaaaaaaaaaaaaaaa"}, 1, "There is no object 0aaaaaaaaaaaaaaaaaaaaa");
    expectRefusal({HOUSE, "show"}, 2, "GLOBALID");
}

TEST_F(AnnotateTest, refusesInASentenceAndChangesNothing) {
    const std::string id = firstId(HOUSE);
    const std::string garbage = directory / "garbage";
    const std::string other = directory / "other.xml";
    const std::string cut = directory / "cut.ifc";
    setContent(garbage, "no document");
    setContent(other, "<Other/>");
    setContent(cut, contentOf(HOUSE).substr(0, 3000));
    const std::string unknown = "0000000000000000000000";
    const std::pair<std::vector<std::string>, std::string> misused[] = {
        {{}, "There is no command. The commands are objects, show, note, "},
        {{"objects"}, "MODEL"},
        {{HOUSE, "note", id}, "TEXT"},
        {{HOUSE, "note", id, "text", "--priority", "much"}, "--priority"},
        {{HOUSE, "notes", "--store", HOUSE}, "the model itself"},
        {{HOUSE, "notes", "--store", ""}, "--store"},
        {{HOUSE, "notes", ""}, "GLOBALID"},
    };
    for (const auto& [arguments, error] : misused) {
        expectRefusal(arguments, 2, error);
    }
    const std::pair<std::vector<std::string>, std::string> refused[] = {
        {{HOUSE, "note", "wall", "text"}, "wall isn't a GlobalId"},
        {{HOUSE, "note", unknown, "text", "--store", store}, "There is no object " + unknown},
        {{HOUSE, "notes", unknown}, "There is no object"},
        {{HOUSE, "objects", "--class", "IfcRoot"}, "IfcRoot isn't a class of objects"},
        {{garbage, "objects"}, garbage},
        {{cut, "objects"}, cut},
        {{directory / "missing.ifc", "objects"}, "missing.ifc"},
        {{HOUSE, "note", id, "text", "--store", garbage}, "isn't a file of users' additions. Line 1, column 1: "},
        {{HOUSE, "notes", "--store", other}, "The root is Other, not Enhancements. Move it away"},
        {{HOUSE, "notes", "--store", directory / "none/"}, "isn't a file"},
        {{HOUSE, "note", id, "text", "--store", garbage + "/store.xml"}, "store.xml can't be"},
    };
    for (const auto& [arguments, error] : refused) {
        expectRefusal(arguments, 1, error);
    }
    EXPECT_FALSE(std::filesystem::exists(store));
    EXPECT_EQ(contentOf(garbage), "no document");
    EXPECT_EQ(contentOf(other), "<Other/>");
}

TEST_F(AnnotateTest, keepsTheStoreBesideTheModelUnlessItIsNamed) {
    const std::pair<const char*, const char*> files[] = {{"a.ifc", "a.enhancements.xml"},
                                                         {"b.IFC", "b.enhancements.xml"},
                                                         {"c.d", "c.d.enhancements.xml"},
                                                         {"e.IfcZip", "e.enhancements.xml"}};
    for (const auto& [model, file] : files) {
        std::filesystem::copy_file(HOUSE, directory / model);
        EXPECT_EQ(run({directory / model, "note", firstId(HOUSE), "text"}).status, 0);
        EXPECT_NE(contentOf(directory / file).find("<Text>text</Text>"), std::string::npos) << model;
    }
}

TEST_F(AnnotateTest, tellsThatItsOutputCouldNotBeWritten) {
    const std::string id = firstId(HOUSE);
    const std::pair<std::vector<std::string>, std::string> commands[] = {
        {{HOUSE, "objects"}, "annotate: The output couldn't be written.\n"},
        {{"--version"}, "annotate: The output couldn't be written.\n"},
        {{"notes", "--help"}, "annotate: The output couldn't be written.\n"},
        {{HOUSE, "note", id, "text", "--store", store},
         "annotate: Note 1 is stored in " + store + ". The output couldn't be written, though.\n"},
    };
    for (const auto& [arguments, error] : commands) {
        const Outcome outcome = finish(start(arguments, "/dev/full"));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.error, error);
    }
}

TEST_F(AnnotateTest, alignsColumnsInATerminal) {
    const std::string model = directory / "model.ifc";
    setContent(model, "ISO-10303-21;HEADER;FILE_SCHEMA(('IFC4'));ENDSEC;DATA;"
                      "#1=IFCWALL('0aaaaaaaaaaaaaaaaaaaaa',$,'\\X2\\58C158C1\\X0\\ e\\X2\\0301\\X0\\');"
                      "#2=IFCDOORSTYLE('1aaaaaaaaaaaaaaaaaaaaa',$,'No.');ENDSEC;END-ISO-10303-21;");
    EXPECT_EQ(run({model, "note", "0aaaaaaaaaaaaaaaaaaaaa", "a", "--store", store}).status, 0);
    EXPECT_EQ(run({model, "note", "1aaaaaaaaaaaaaaaaaaaaa", "b", "--priority", "10", "--store", store}).status, 0);
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_TRUE(::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
    EXPECT_EQ(finish(start({model, "notes", "--store", store}, ::ptsname(terminal))).status, 0);
    std::string shown;
    char character = '\0';
    while (::read(terminal, &character, 1) == 1) {
        shown += character;
    }
    ::close(terminal);
    shown = std::regex_replace(shown, std::regex("20[0-9-]{8}T[0-9:]{8}Z"), "2026-02-03T04:05:06Z");
    EXPECT_EQ(
        shown,
        "Number  GlobalId                Class         Name    Priority  State  Author  Time                  Changed "
        "by  Changed  Text\r\n"
        "1       0aaaaaaaaaaaaaaaaaaaaa  IfcWall       \xE5\xA3\x81\xE5\xA3\x81 e\xCC\x81  0         open   Anna    "
        "2026-02-03T04:05:06Z                       a\r\n"
        "2       1aaaaaaaaaaaaaaaaaaaaa  IfcDoorStyle  No.     10        open   Anna    2026-02-03T04:05:06Z           "
        "            b\r\n");
}

} // namespace
} // namespace annotate

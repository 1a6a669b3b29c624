#include "Annotate/CommandTest.h"
#include "FoundationClasses/IfcClass.h"
#include "Utilities/FileLock.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <sys/resource.h>
#include <thread>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;
using orv::utilities::FileLock;

class AnnotateTest : public CommandTest {};

std::vector<std::string> models() {
    std::vector<std::string> paths = {HOUSE};
    if (const char* const others = std::getenv("ORV_REAL_MODELS")) {
        for (const auto& entry : std::filesystem::directory_iterator(others)) {
            paths.push_back(entry.path());
        }
    }
    return paths;
}

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

TEST_F(AnnotateTest, bringsNotesBackAfterARestartInOrderWithEveryCharacter) {
    const std::pair<const char*, const char*> texts[] = {
        {"plain", "plain"},
        {"  ", "  "},
        {"a]]>b <&>", "a]]>b <&>"},
        {"\t", "\\t"},
        {"\r", "\\r"},
        {"\n", "\\n"},
        {"\r\n x \r", R"(\r\n x \r)"},
        {"\x0b", "\\x0B"},
        {"\x7f\xC2\x80\xC2\x9F\xC2\xA0", "\\x7F\\xC2\\x80\\xC2\\x9F\xC2\xA0"},
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
        {"\xFF", "\\xFF"},
        {"-1", "-1"},
        {"[a,b]", "[a,b]"},
        {"_x0041_", "_x0041_"},
        {"\\n", "\\\\n"}};
    for (const std::string& model : models()) {
        std::filesystem::remove(store);
        const std::string content = contentOf(model);
        const std::string id = firstId(model);
        EXPECT_EQ(run({model, "note", firstId(model, "IfcContext"), "another", "--store", store}).status, 0);
        for (const auto& [text, shown] : texts) {
            const Outcome added =
                run({model, "note", "--store", store, "--priority", "-3", "--resolved", "--", id, text});
            EXPECT_EQ(added.status, 0) << added.error;
        }
        std::istringstream lines(run({model, "notes", id, "--store", store}).output);
        for (const auto& [text, shown] : texts) {
            std::string line;
            std::getline(lines, line);
            EXPECT_TRUE(line.find('\t' + id + '\t') != std::string::npos &&
                        line.find("\t-3\tresolved\t") != std::string::npos &&
                        line.ends_with(std::string("Z\t") + shown))
                << line << shown;
        }
        EXPECT_EQ(lines.peek(), EOF);
        EXPECT_EQ(std::system((XMLLINT " --noout " + store).c_str()), 0);
        EXPECT_TRUE(contentOf(model) == content);
    }
}

TEST_F(AnnotateTest, bringsPropertyValuesBackAfterARestart) {
    const std::pair<const char*, const char*> sets[] = {{"IfcWall", "Pset_WallCommon"},
                                                        {"IfcDoor", "Pset_DoorCommon"},
                                                        {"IfcSpace", "Pset_SpaceCommon"},
                                                        {"IfcBuilding", "Pset_BuildingCommon"}};
    for (const std::string& model : models()) {
        std::map<std::string, std::string> ids;
        for (const auto& [ifcClass, set] : sets) {
            const std::string id = ids[set] = firstId(model, ifcClass);
            EXPECT_EQ(run({model, "set", id, set, "Reference", "of " + id, "--store", store}).status, 0);
        }
        for (const auto& [set, id] : ids) {
            EXPECT_EQ(run({model, "get", id, set, "Reference", "--store", store}).output, "of " + id + "\n");
        }
    }
}

TEST_F(AnnotateTest, setsEachKindOfPropertyWithItsCommandAndRefusesOtherValues) {
    const std::string id = firstId(HOUSE, "IfcWall");
    const auto argumentsOf = [&](const std::string& line) {
        std::istringstream words(line);
        std::string word;
        std::getline(words, word, '|');
        std::vector<std::string> arguments = {HOUSE, word, "--store", store, id};
        while (std::getline(words, word, '|')) {
            arguments.push_back(word);
        }
        return arguments;
    };
    const std::string list = "Pset_Address|AddressLines";
    const std::string table = "Pset_AirTerminalPHistory|InductionRatio";
    const std::pair<std::string, std::string> sets[] = {
        {"set|Pset_WallCommon|FireRating|F60", ""},
        {"set|Pset_WallCommon|FireRating|[010]", ""},
        {"set-list|" + list + "|old", "annotate: Pset_Address is published for objects of other classes.\n"},
        {"set-list|" + list + "|007|[a,b]|[]|b c",
         "annotate: Pset_Address is published for objects of other classes.\n"},
        {"set-table|" + table + "|5|6",
         "annotate: Pset_AirTerminalPHistory is published for objects of other classes.\n"},
        {"set-table|" + table + "|1|2.5|3|4",
         "annotate: Pset_AirTerminalPHistory is published for objects of other classes.\n"},
        {"set|Pset_WallCommon|Status|BROKEN",
         "annotate: The values of Pset_WallCommon.Status are DEMOLISH;EXISTING;NEW;TEMPORARY;OTHER;NOTKNOWN;UNSET; "
         "this isn't among them.\n"},
    };
    for (const auto& [line, remark] : sets) {
        const Outcome outcome = run(argumentsOf(line));
        EXPECT_EQ(outcome.status, 0) << line;
        EXPECT_EQ(outcome.error, remark) << line;
    }
    const std::string content = contentOf(store);
    const std::pair<std::string, std::string> refused[] = {
        {"set|Pset_WallCommon|FireRate|F90", "Pset_WallCommon has no FireRate; did you mean FireRating?"},
        {"get|Pset_WalCommon|FireRating", "There is no property set Pset_WalCommon; did you mean Pset_WallCommon?"},
        {"set|Pset_WallCommon|ThermalTransmittance|warm",
         "IfcThermalTransmittanceMeasure: numbers with a point, as in 0.24. What was given isn't one."},
        {"set|Pset_AirTerminalBoxTypeCommon|AirPressureRange|1;x", "What was given isn't one. Nothing was stored."},
        {"set|Pset_AirTerminalBoxTypeCommon|AirPressureRange|1;2;3;4", "three parts at most"},
        {"set|" + list + "|a", "Use the command set-list"},
        {"set-list|Pset_WallCommon|Status|NEW", "is of the kind enumerated. Use the command set."},
        {"set|Pset_ActionRequest|RequestSourceName|a", "is of the kind reference"},
        {"get|Pset_WallCommon|Combustible", "isn't set on " + id},
    };
    for (const auto& [line, error] : refused) {
        expectRefusal(argumentsOf(line), 1, error);
    }
    expectRefusal(argumentsOf("set-table|" + table + "|1"), 2,
                  "It takes GLOBALID PSET PROPERTY DEFINING DEFINED ...\n");
    EXPECT_EQ(contentOf(store), content);
    EXPECT_EQ(run(argumentsOf("get|Pset_WallCommon|FireRating")).output, "[010]\n");
    EXPECT_EQ(run(argumentsOf("get|" + list)).output, "007\n[a,b]\n[]\nb c\n");
    EXPECT_EQ(run(argumentsOf("get|" + table)).output, "1\t2.5\n3\t4\n");
}

TEST_F(AnnotateTest, readsWhatEarlierVersionsSetAndKeepsIt) {
    const std::string id = "1jXyBr6EAquR0PHYXIrQ4_";
    const auto edit = [&id](const std::string& name, const std::string& values) {
        return "  <PropertyEdit>\n    <OwnerId>" + id + "</OwnerId>\n" + name + values + "  </PropertyEdit>\n";
    };
    const std::string rating = "    <PropertySet>Pset_WallCommon</PropertySet>\n    <Property>FireRating</Property>\n";
    const std::string ratio =
        "    <PropertySet>Pset_AirTerminalPHistory</PropertySet>\n    <Property>InductionRatio</Property>\n";
    const std::string lines = "    <PropertySet>Pset_Address</PropertySet>\n    <Property>AddressLines</Property>\n";
    const std::string earlier = edit(rating, "    <Form>single</Form>\n    <Value>F30</Value>\n") +
                                edit(rating, "    <Form>single</Form>\n    <Value>F60</Value>\n") +
                                edit(ratio, "    <Form>table</Form>\n    <Value>1</Value>\n    <Value>2.5</Value>\n") +
                                edit(lines, "    <Form>list</Form>\n    <Value>a</Value>\n    <Value>b</Value>\n");
    setContent(store, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Enhancements>\n" + earlier + "</Enhancements>\n");
    const auto get = [&](const std::string& set, const std::string& property) {
        return run({HOUSE, "get", id, set, property, "--store", store}).output;
    };
    EXPECT_EQ(get("Pset_WallCommon", "FireRating"), "F60\n");
    EXPECT_EQ(get("Pset_AirTerminalPHistory", "InductionRatio"), "1\t2.5\n");
    EXPECT_EQ(get("Pset_Address", "AddressLines"), "a\nb\n");
    EXPECT_EQ(run({HOUSE, "set", id, "Pset_WallCommon", "FireRating", "F90", "--store", store}).status, 0);
    EXPECT_EQ(get("Pset_WallCommon", "FireRating"), "F90\n");
    EXPECT_NE(contentOf(store).find(earlier), std::string::npos) << contentOf(store);
}

TEST_F(AnnotateTest, listsTheDefinitionsWithoutAModel) {
    EXPECT_EQ(lineCount(run({"definitions"}).output), 4501U);
    const std::string walls = run({"definitions", "Pset_WallCommon"}).output;
    EXPECT_NE(walls.find("Pset_WallCommon\tFireRating\tsingle\tIfcLabel\t"), std::string::npos) << walls;
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

TEST_F(AnnotateTest, tellsThatANoteDidNotGetIntoTheFile) {
    const std::string id = firstId(HOUSE);
    EXPECT_EQ(run({HOUSE, "note", id, "first", "--store", store}).status, 0);
    const std::string content = contentOf(store);
    auto held = FileLock::tryLock(store, true, FileLock::Access::Read);
    expectRefusal({HOUSE, "note", id, "second", "--store", store}, 1, "is locked by another program");
    EXPECT_EQ(lineCount(run({HOUSE, "notes", "--store", store}).output), 1U);
    held.reset();
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const rlimit limit{content.size() + 50, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    expectRefusal({HOUSE, "note", id, "second", "--store", store}, 1, "It didn't get into " + store);
    EXPECT_EQ(contentOf(store), content);
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
        "Number  GlobalId                Class         Name    Priority  State  Author  Time                  Text\r\n"
        "1       0aaaaaaaaaaaaaaaaaaaaa  IfcWall       \xE5\xA3\x81\xE5\xA3\x81 e\xCC\x81  0         open   Anna    "
        "2026-02-03T04:05:06Z  a\r\n"
        "2       1aaaaaaaaaaaaaaaaaaaaa  IfcDoorStyle  No.     10        open   Anna    2026-02-03T04:05:06Z  b\r\n");
}

} // namespace
} // namespace annotate

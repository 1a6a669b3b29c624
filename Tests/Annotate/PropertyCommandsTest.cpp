#include "Annotate/CommandTest.h"

#include <map>
#include <sstream>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;

class PropertyCommandsTest : public CommandTest {};

TEST_F(PropertyCommandsTest, bringsPropertyValuesBackAfterARestart) {
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

TEST_F(PropertyCommandsTest, setsEachKindOfPropertyWithItsCommandAndRefusesOtherValues) {
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
        {"get|Pset_WalCommon|FireRating", "No property set Pset_WalCommon is defined; did you mean Pset_WallCommon?"},
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

TEST_F(PropertyCommandsTest, readsWhatEarlierVersionsSetAndKeepsIt) {
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

TEST_F(PropertyCommandsTest, listsTheDefinitionsWithoutAModel) {
    EXPECT_EQ(lineCount(run({"definitions"}).output), 4501U);
    const std::string walls = run({"definitions", "Pset_WallCommon"}).output;
    EXPECT_NE(walls.find("Pset_WallCommon\tFireRating\tsingle\tIfcLabel\t"), std::string::npos) << walls;
}

} // namespace
} // namespace annotate

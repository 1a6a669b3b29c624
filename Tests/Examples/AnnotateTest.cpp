#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"
#include "Support/TemporaryDirectory.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;
using orv::utilities::FileLock;

struct Outcome {
    int status = -1;
    std::string output;
    std::string error;
};

class AnnotateTest : public ::testing::Test {
protected:
    pid_t start(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), ANNOTATE);
        std::vector<char*> pointers(arguments.size() + 1);
        std::transform(arguments.begin(), arguments.end(), pointers.begin(), [](auto& each) { return each.data(); });
        const pid_t process = ::fork();
        if (process == 0) {
            const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
            ::dup2(::open(outputOf(::getpid()).c_str(), flags, 0600), STDOUT_FILENO);
            ::dup2(::open(errorOf(::getpid()).c_str(), flags, 0600), STDERR_FILENO);
            ::execv(ANNOTATE, pointers.data());
            ::_exit(127);
        }
        return process;
    }

    Outcome finish(pid_t process) const {
        int status = 0;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(outputOf(process)),
                contentOf(errorOf(process))};
    }

    Outcome run(const std::vector<std::string>& arguments) const { return finish(start(arguments)); }

    std::string outputOf(pid_t process) const { return directory / (std::to_string(process) + ".out"); }
    std::string errorOf(pid_t process) const { return directory / (std::to_string(process) + ".err"); }

    std::string firstId(const std::string& model, const std::string& ifcClass = "IfcObject") const {
        return run({model, "objects", "--class", ifcClass}).output.substr(0, 22);
    }

    void expectRefusal(const std::vector<std::string>& arguments, int status, const std::string& error) const {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << outcome.error;
        EXPECT_NE(outcome.error.find(error), std::string::npos) << outcome.error << "doesn't tell: " << error;
        EXPECT_EQ(outcome.output, "");
    }

    static std::vector<std::string> models() {
        std::vector<std::string> paths = {HOUSE};
        if (std::filesystem::is_directory(REAL_MODELS)) {
            for (const auto& entry : std::filesystem::directory_iterator(REAL_MODELS)) {
                paths.push_back(entry.path());
            }
        }
        return paths;
    }

    orv::tests::TemporaryDirectory directory;
    std::string store = directory / "notes.xml";
};

std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
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

TEST_F(AnnotateTest, bringsNotesBackAfterARestartInOrderWithEveryCharacter) {
    const std::vector<std::string> texts = {"plain", "",   "  ",        "a]]>b <&>", "\t",
                                            "\r",    "\n", "\r\n x \r", "\x0b",      "\xF0\x9F\x98\x80",
                                            "\xFF",  "-1", "[a,b]",     "_x0041_",   "\\n"};
    for (const std::string& model : models()) {
        std::filesystem::remove(store);
        const std::string content = contentOf(model);
        const std::string id = firstId(model);
        std::vector<std::string> expected;
        for (const std::string& text : texts) {
            const Outcome added =
                run({model, "note", "--store", store, "--priority", "-3", "--resolved", "--", id, text});
            EXPECT_EQ(added.status, 0) << added.error;
            expected.push_back("\t-3\tresolved\t" + printable(text));
        }
        std::istringstream lines(run({model, "notes", id, "--store", store}).output);
        for (const std::string& ending : expected) {
            std::string line;
            std::getline(lines, line);
            EXPECT_TRUE(line.starts_with(id) && line.ends_with(ending)) << line << ending;
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
    const std::string id = firstId(HOUSE);
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
    for (const std::string& line :
         {std::string("set|Pset_WallCommon|FireRating|F60"), std::string("set|Pset_WallCommon|FireRating|[010]"),
          "set-list|" + list + "|007|[a,b]|[]|b c", "set-table|" + table + "|1|2.5|3|4"}) {
        EXPECT_EQ(run(argumentsOf(line)).status, 0) << line;
    }
    const std::string content = contentOf(store);
    const std::pair<std::string, std::string> refused[] = {
        {"set|Pset_WallCommon|FireRate|F90", "Pset_WallCommon has no FireRate; did you mean FireRating?"},
        {"get|Pset_WalCommon|FireRating", "no property set Pset_WalCommon; did you mean Pset_WallCommon?"},
        {"set|Pset_WallCommon|ThermalTransmittance|warm", "IfcThermalTransmittanceMeasure and refused"},
        {"set|Pset_AirTerminalBoxTypeCommon|AirPressureRange|1;x", "refused what was given"},
        {"set|Pset_AirTerminalBoxTypeCommon|AirPressureRange|1;2;3;4", "three parts at most"},
        {"set|" + list + "|a", "Use the command set-list"},
        {"set-list|Pset_WallCommon|Status|NEW", "is of the kind enumerated. Use the command set."},
        {"set-list|" + list + "|c", "lists and tables are set once"},
        {"set|Pset_ActionRequest|RequestSourceName|a", "is of the kind reference"},
        {"get|Pset_WallCommon|IsExternal", "isn't set on " + id},
    };
    for (const auto& [line, error] : refused) {
        expectRefusal(argumentsOf(line), 1, error);
    }
    expectRefusal(argumentsOf("set-table|" + table + "|1"), 2, "A table takes pairs");
    EXPECT_EQ(contentOf(store), content);
    EXPECT_EQ(run(argumentsOf("get|Pset_WallCommon|FireRating")).output, "[010]\n");
    EXPECT_EQ(run(argumentsOf("get|" + list)).output, "007\n[a,b]\n[]\nb c\n");
    EXPECT_EQ(run(argumentsOf("get|" + table)).output, "1\t2.5\n3\t4\n");
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
        {{}, "subcommand"},
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
        {{HOUSE, "notes", unknown, "--store", store}, "There is no object"},
        {{HOUSE, "objects", "--class", "IfcRoot"}, "IfcRoot isn't a class of objects"},
        {{garbage, "objects"}, garbage},
        {{cut, "objects"}, cut},
        {{directory / "missing.ifc", "objects"}, "missing.ifc"},
        {{HOUSE, "note", id, "text", "--store", garbage}, "isn't a file of users' additions (garbage, line 1"},
        {{HOUSE, "notes", "--store", other}, "its root element is Other"},
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
    expectRefusal({HOUSE, "notes", "--store", store}, 1, "is locked by another program");
    held.reset();
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const rlimit limit{content.size() + 50, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    expectRefusal({HOUSE, "note", id, "second", "--store", store}, 1, "It didn't get into " + store);
    EXPECT_EQ(contentOf(store), content);
}

TEST_F(AnnotateTest, ofManyProcessesTakesTurnsAndLosesNoNote) {
    const std::string id = firstId(HOUSE);
    std::vector<pid_t> processes(8);
    for (pid_t& process : processes) {
        process = start({HOUSE, "note", id, "text", "--store", store});
    }
    for (const pid_t process : processes) {
        EXPECT_EQ(finish(process).output, "Stored in " + store + ".\n");
    }
    EXPECT_EQ(lineCount(run({HOUSE, "notes", "--store", store}).output), processes.size());
}

} // namespace
} // namespace annotate

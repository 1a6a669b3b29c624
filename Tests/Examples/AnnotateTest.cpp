#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"
#include "Support/TemporaryDirectory.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
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
    pid_t start(std::vector<std::string> arguments, const std::string& name) {
        arguments.insert(arguments.begin(), ANNOTATE);
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        const int flags = O_WRONLY | O_CREAT | O_TRUNC;
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, (directory / (name + ".out")).c_str(), flags, 0600);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, (directory / (name + ".err")).c_str(), flags, 0600);
        pid_t process = -1;
        EXPECT_EQ(::posix_spawn(&process, ANNOTATE, &actions, nullptr, pointers.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&actions);
        return process;
    }

    Outcome finish(pid_t process, const std::string& name) {
        int status = 0;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(directory / (name + ".out")),
                contentOf(directory / (name + ".err"))};
    }

    Outcome run(const std::vector<std::string>& arguments) { return finish(start(arguments, "run"), "run"); }

    std::string firstId(const std::string& model) { return run({model, "objects"}).output.substr(0, 22); }

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
    const std::vector<std::string> single = {"Pset_WallCommon", "FireRating"};
    const std::vector<std::string> list = {"Pset_Address", "AddressLines"};
    const std::vector<std::string> table = {"Pset_AirTerminalPHistory", "InductionRatio"};
    const std::string id = firstId(HOUSE);
    const auto command = [&](const std::string& name, const std::vector<std::string>& property,
                             const std::vector<std::string>& values) {
        std::vector<std::string> arguments = {HOUSE, name, "--store", store, id, property[0], property[1]};
        arguments.insert(arguments.end(), values.begin(), values.end());
        return run(arguments);
    };
    EXPECT_EQ(command("set", single, {"F60"}).status, 0);
    EXPECT_EQ(command("set", single, {"[010]"}).status, 0);
    EXPECT_EQ(command("set-list", list, {"007", "[a,b]", "[]", "b c"}).status, 0);
    EXPECT_EQ(command("set-table", table, {"1", "2.5", "3", "4"}).status, 0);
    const std::string content = contentOf(store);
    const struct {
        std::string name;
        std::vector<std::string> property;
        std::vector<std::string> values;
        int status;
        std::string error;
    } refused[] = {
        {"set",
         {"Pset_WallCommon", "FireRate"},
         {"F90"},
         1,
         "Pset_WallCommon has no FireRate; did you mean FireRating?"},
        {"get",
         {"Pset_WalCommon", "FireRating"},
         {},
         1,
         "no property set Pset_WalCommon; did you mean Pset_WallCommon?"},
        {"set", {"Pset_WallCommon", "ThermalTransmittance"}, {"warm"}, 1, "IfcThermalTransmittanceMeasure and refused"},
        {"set", {"Pset_AirTerminalBoxTypeCommon", "AirPressureRange"}, {"1;x"}, 1, "refused what was given"},
        {"set", {"Pset_AirTerminalBoxTypeCommon", "AirPressureRange"}, {"1;2;3;4"}, 1, "three parts at most"},
        {"set", list, {"a"}, 1, "Use the command set-list"},
        {"set-list", {"Pset_WallCommon", "Status"}, {"NEW"}, 1, "is of the kind enumerated. Use the command set."},
        {"set-list", list, {"c"}, 1, "lists and tables are set once"},
        {"set-table", table, {"1"}, 2, "A table takes pairs"},
        {"set", {"Pset_ActionRequest", "RequestSourceName"}, {"a"}, 1, "is of the kind reference"},
        {"get", {"Pset_WallCommon", "IsExternal"}, {}, 1, "isn't set on " + id},
    };
    for (const auto& [name, property, values, status, error] : refused) {
        const Outcome outcome = command(name, property, values);
        EXPECT_EQ(outcome.status, status) << outcome.error;
        EXPECT_NE(outcome.error.find(error), std::string::npos) << outcome.error << "doesn't tell: " << error;
    }
    EXPECT_EQ(contentOf(store), content);
    EXPECT_EQ(command("get", single, {}).output, "[010]\n");
    EXPECT_EQ(command("get", list, {}).output, "007\n[a,b]\n[]\nb c\n");
    EXPECT_EQ(command("get", table, {}).output, "1\t2.5\n3\t4\n");
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
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string error;
    } cases[] = {
        // clang-format off
        {{}, 2, "subcommand"}, {{"objects"}, 2, "MODEL"}, {{HOUSE}, 2, "subcommand"},
        {{HOUSE, "note", id}, 2, "TEXT"}, {{HOUSE, "note", id, "text", "--priority", "much"}, 2, "--priority"},
        {{HOUSE, "notes", "--store", HOUSE}, 2, "the model itself"}, {{HOUSE, "notes", "--store", ""}, 2, "--store"},
        {{HOUSE, "notes", ""}, 2, "GLOBALID"}, {{HOUSE, "notes", "--store", directory / "none/"}, 1, "isn't a file"},
        {{HOUSE, "note", "wall", "text"}, 1, "wall isn't a GlobalId"},
        {{HOUSE, "note", "0000000000000000000000", "text", "--store", store},
         // clang-format on
         1,
         "There is no object 0000000000000000000000"},
        {{HOUSE, "notes", "0000000000000000000000", "--store", store}, 1, "There is no object"},
        {{HOUSE, "objects", "--class", "IfcRoot"}, 1, "IfcRoot isn't a class of objects"},
        {{garbage, "objects"}, 1, garbage},
        {{cut, "objects"}, 1, cut},
        {{directory / "missing.ifc", "objects"}, 1, "missing.ifc"},
        {{HOUSE, "note", id, "text", "--store", garbage}, 1, "isn't a file of users' additions (garbage, line 1"},
        {{HOUSE, "notes", "--store", other}, 1, "its root element is Other"},
        {{HOUSE, "note", id, "text", "--store", directory / "."}, 1, "isn't a file"},
        {{HOUSE, "note", id, "text", "--store", garbage + "/store.xml"}, 1, "store.xml can't be"},
    };
    for (const auto& [arguments, status, error] : cases) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << outcome.error;
        EXPECT_NE(outcome.error.find(error), std::string::npos) << outcome.error << "doesn't tell: " << error;
        EXPECT_EQ(outcome.output, "");
    }
    EXPECT_FALSE(std::filesystem::exists(store));
    EXPECT_EQ(contentOf(garbage), "no document");
    EXPECT_EQ(contentOf(other), "<Other/>");
}

TEST_F(AnnotateTest, tellsThatAnotherProgramHasTheStoreLocked) {
    const std::string id = firstId(HOUSE);
    EXPECT_EQ(run({HOUSE, "note", id, "first", "--store", store}).status, 0);
    const std::string content = contentOf(store);
    auto held = FileLock::tryLock(store, true, FileLock::Access::Read);
    for (const auto& arguments : {std::vector<std::string>{HOUSE, "note", id, "second", "--store", store},
                                  {HOUSE, "notes", "--store", store}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.error.find("is locked by another program"), std::string::npos) << outcome.error;
        EXPECT_EQ(outcome.output, "");
    }
    EXPECT_EQ(contentOf(store), content);
}

TEST_F(AnnotateTest, tellsThatANoteDidNotGetIntoTheFile) {
    const std::string id = firstId(HOUSE);
    EXPECT_EQ(run({HOUSE, "note", id, "first", "--store", store}).status, 0);
    const std::string content = contentOf(store);
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const rlimit limit{std::filesystem::file_size(store) + 50, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const Outcome outcome = run({HOUSE, "note", id, "second", "--store", store});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("It didn't get into " + store), std::string::npos) << outcome.error;
    EXPECT_EQ(contentOf(store), content);
    EXPECT_EQ(outcome.output, "");
}

TEST_F(AnnotateTest, ofManyProcessesTakesTurnsAndLosesNoNote) {
    const std::string id = firstId(HOUSE);
    std::vector<pid_t> processes;
    for (int number = 0; number < 24; ++number) {
        const std::string text = "note " + std::to_string(number);
        processes.push_back(start({HOUSE, "note", id, text, "--store", store}, text));
        if (processes.size() % 8 == 0) {
            for (std::size_t finished = processes.size() - 8; finished < processes.size(); ++finished) {
                const Outcome outcome = finish(processes[finished], "note " + std::to_string(finished));
                EXPECT_EQ(outcome.output, "Stored in " + store + ".\n") << outcome.error;
                EXPECT_EQ(outcome.status, 0);
            }
        }
    }
    EXPECT_EQ(lineCount(run({HOUSE, "notes", "--store", store}).output), processes.size());
}

} // namespace
} // namespace annotate

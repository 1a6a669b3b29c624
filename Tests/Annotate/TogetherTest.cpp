#include "Annotate/CommandTest.h"

#include <chrono>
#include <csignal>
#include <set>
#include <sstream>
#include <sys/file.h>
#include <thread>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;

/// Several commands on one store at the same time, and one that ends in the middle.
class TogetherTest : public CommandTest {};

TEST_F(TogetherTest, ofManyProcessesTakesTurnsAndLosesNoNote) {
    const std::string id = firstId(HOUSE);
    std::vector<pid_t> processes(8);
    for (pid_t& process : processes) {
        process = start({HOUSE, "note", id, "text", "--store", store});
    }
    std::set<std::string> outputs;
    std::set<std::string> expected;
    for (std::size_t number = 0; number < processes.size(); ++number) {
        outputs.insert(finish(processes[number]).output);
        expected.insert("Note " + std::to_string(number + 1) + " is stored in " + store + ".\n");
    }
    EXPECT_EQ(outputs, expected);
    EXPECT_EQ(lineCount(run({HOUSE, "notes", "--store", store}).output), processes.size());
}

TEST_F(TogetherTest, storesAllOfAnImportOrNothingWhenItIsStopped) {
    const std::string id = firstId(HOUSE, "IfcWall");
    const std::string file = directory / "values.csv";
    std::istringstream definitions(run({HOUSE, "definitions"}).output);
    std::string content = "GlobalId\tset\tproperty\tvalue\n";
    for (std::string set, property, rest; std::getline(definitions, set, '\t');) {
        std::getline(std::getline(definitions, property, '\t'), rest);
        content += rest.starts_with("single\tIfcLabel\t") ? id + '\t' + set + '\t' + property + "\ta\n" : "";
    }
    setContent(file, content);
    const std::size_t edits = lineCount(content) - 1;
    ASSERT_GT(edits, 300U);
    const std::string stored = std::to_string(edits) + " edits are stored in " + store + ".\n";
    const auto start = std::chrono::steady_clock::now();
    run({HOUSE, "import", file, "--store", store});
    const auto whole = std::chrono::steady_clock::now() - start;
    for (int stop = 0; stop < 24; ++stop) {
        const int signal = stop % 2 == 0 ? SIGINT : SIGKILL;
        std::filesystem::remove(store);
        EXPECT_EQ(run({HOUSE, "note", id, "first", "--store", store}).status, 0);
        const pid_t process = this->start({HOUSE, "import", file, "--store", store});
        std::this_thread::sleep_for(whole * stop / 20);
        ::kill(process, signal);
        const Outcome outcome = finish(process);
        const std::size_t present = lineCount(run({HOUSE, "edits", "--store", store}).output);
        EXPECT_TRUE(present == edits || (present == 0 && outcome.status == -1)) << present;
        if (signal == SIGINT) {
            EXPECT_EQ(outcome.output, present == 0 ? "" : stored);
            EXPECT_FALSE(present > 0 && outcome.error.find("Nothing was stored") != std::string::npos);
        }
        EXPECT_EQ(run({HOUSE, "note", id, "second", "--store", store}).status, 0);
        EXPECT_EQ(lineCount(run({HOUSE, "notes", "--store", store}).output), 2U);
        EXPECT_EQ(lineCount(run({HOUSE, "edits", "--store", store}).output), present);
    }
}

TEST_F(TogetherTest, ofTwoPeopleAtOnceKeepsEveryCommand) {
    const std::string id = firstId(HOUSE, "IfcWall");
    const std::string one =
        "i=0; while [ $i -lt 20 ]; do i=$((i+1)); \"$1\" \"$2\" note \"$3\" $i --author $4 --store \"$5\" "
        "&& \"$1\" \"$2\" set \"$3\" Pset_WallCommon $6 $i --author $4 --store \"$5\" || exit 1; done";
    const std::string arguments = std::string("' sh '") + program() + "' '" + HOUSE + "' '" + id + "' ";
    const std::string first = "sh -c '" + one + arguments + "Anna notes.xml FireRating >/dev/null";
    const std::string second = "sh -c '" + one + arguments + "Ben notes.xml Reference >/dev/null";
    const std::string both =
        "cd '" + (directory / "").string() + "' && { (" + first + ") & (" + second + ") && wait $!; }";
    EXPECT_EQ(std::system(both.c_str()), 0); // NOLINT(cert-env33-c)
    const std::string content = contentOf(store);
    for (const char* const author : {"Anna", "Ben"}) {
        EXPECT_EQ(lineCount(run({HOUSE, "notes", "--author", author, "--store", store}).output), 20U);
    }
    for (int number = 1; number <= 40; ++number) {
        EXPECT_NE(content.find("<Number>" + std::to_string(number) + "</Number>"), std::string::npos) << number;
    }
    EXPECT_EQ(run({HOUSE, "get", id, "Pset_WallCommon", "FireRating", "--store", store}).output, "20\n");
    EXPECT_EQ(run({HOUSE, "get", id, "Pset_WallCommon", "Reference", "--store", store}).output, "20\n");
}

TEST_F(TogetherTest, loadsTheStoreWhenItsTurnHasComeAtTheFolderOfTheFile) {
    const std::string id = firstId(HOUSE);
    std::filesystem::create_directory(directory / "folder");
    std::filesystem::create_symlink(directory / "folder/notes.xml", store);
    std::ofstream(directory / "folder/notes.xml").close();
    EXPECT_EQ(run({HOUSE, "note", id, "first", "--store", store}).status, 0);
    const std::string one = contentOf(store);
    EXPECT_EQ(run({HOUSE, "note", id, "second", "--store", store}).status, 0);
    const std::string two = contentOf(store);
    setContent(store, one);

    const int folder = ::open((directory / "folder").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(folder, LOCK_EX), 0);
    const pid_t process = start({HOUSE, "note", id, "third", "--store", store});
    // Out of turn it would be done by then; in turn it waits for as long as this takes.
    siginfo_t ended{};
    for (int remaining = 50; remaining > 0 && ended.si_pid == 0; --remaining) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT), 0);
    }
    setContent(store, two);
    ::close(folder);
    EXPECT_EQ(finish(process).error, "");
    EXPECT_EQ(lineCount(run({HOUSE, "notes", "--store", store}).output), 3U);
}

} // namespace
} // namespace annotate

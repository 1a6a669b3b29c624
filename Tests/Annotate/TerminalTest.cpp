#include "Annotate/HouseTest.h"

#include <pty.h>
#include <regex>

namespace annotate {
namespace {

/// annotate at a terminal.
class TerminalTest : public HouseTest {
protected:
    ~TerminalTest() override { closeTerminal(); }

    /// Ends what was started before.
    void startAtTerminal(std::vector<std::string> arguments) {
        closeTerminal();
        received.clear();
        arguments.insert(arguments.begin(), program());
        std::vector<char*> pointers(arguments.size() + 1);
        std::transform(arguments.begin(), arguments.end(), pointers.begin(), [](auto& each) { return each.data(); });
        winsize size{};
        size.ws_row = 25;
        size.ws_col = 200;
        process = ::forkpty(&terminal, nullptr, nullptr, &size);
        ASSERT_NE(process, -1);
        if (process == 0) {
            ::execv(pointers.front(), pointers.data());
            ::_exit(127);
        }
    }

    /// Reads until it shows the text. Returns false if it ends before.
    bool awaits(const std::string& text) {
        char room[4096];
        while (shown().find(text) == std::string::npos) {
            const ssize_t count = ::read(terminal, room, sizeof(room));
            if (count <= 0) {
                return false;
            }
            received.append(room, static_cast<std::size_t>(count));
        }
        return true;
    }

    /// What was written to the terminal, without the sequences that hide the cursor and clear a line. That of Windows
    /// moves the cursor in place of a space.
    std::string shown() const {
        const std::string text = std::regex_replace(received, std::regex("\x1b\\[1C"), " ");
        return std::regex_replace(text, std::regex("\x1b\\[[?0-9;]*[a-zA-Z]|\r"), "");
    }

    void closeTerminal() const {
        if (process != -1) {
            ::close(terminal);
            ::waitpid(process, nullptr, 0);
        }
    }

    int terminal = -1;
    pid_t process = -1;
    std::string received;
};

TEST_F(TerminalTest, isInterruptedByItsKeyWhileItImports) {
    const std::string model = directory / "Bürö€.ifc";
    const std::string file = directory / "Türen.csv";
    const std::string stored = directory / "Bürö€.enhancements.xml";
    std::filesystem::copy_file(HOUSE, model);
    std::ofstream lines(file);
    lines << "GlobalId,set,property,value\n";
    for (int line = 0; line < 2000; ++line) {
        lines << wallOfHouse << ",Pset_WallComon,FireRatng" << line << ",F30\n"; // near names take long to find
    }
    lines.close();

    startAtTerminal({model, "import", file});
    EXPECT_TRUE(awaits("Checking the lines: [")) << shown();
    EXPECT_EQ(::write(terminal, "\x03", 1), 1);
    EXPECT_FALSE(awaits("stored in"));
    EXPECT_NE(shown().find("\nannotate: Interrupted. Nothing was stored.\n"), std::string::npos) << shown();
    EXPECT_FALSE(std::filesystem::exists(stored));

    startAtTerminal({model, "note", wallOfHouse, "Grün"});
    EXPECT_TRUE(awaits("Note 1 is stored in " + stored + ".\n")) << shown();
}

} // namespace
} // namespace annotate

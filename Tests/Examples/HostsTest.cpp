#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace orv::tests {
namespace {

/// What the command writes to its two outputs, and its exit status in the end.
std::string run(const std::string& command) {
    std::FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    std::string output;
    for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
        output += static_cast<char>(letter);
    }
    return output + std::to_string(WEXITSTATUS(::pclose(pipe)));
}

TEST(Tasks, addsChangesAndRemoves) {
    const TemporaryDirectory directory;
    const std::string store = directory / "tasks.xml";
    const std::string tasks = TASKS + (" " + store);
    const std::string object = " 1xS3BCk291UvhgP2dvNMKI ";
    EXPECT_EQ(run(tasks), "0");
    EXPECT_EQ(run(tasks + " add" + object + "'Check the door' 1.5"), "1. Check the door, open, 1.5 h\n0");
    EXPECT_EQ(run(tasks + " add" + object + "Paint"), "1. Check the door, open, 1.5 h\n2. Paint, open\n0");
    EXPECT_EQ(run(tasks + " done 2"), "1. Check the door, open, 1.5 h\n2. Paint, done\n0");
    EXPECT_EQ(run(tasks + " remove 1"), "1. Paint, done\n0");
    EXPECT_EQ(run(tasks + " remove 2"), "That can't be done.\n1");
    EXPECT_EQ(run(tasks + " add" + object + "Paint soon"), "That can't be done.\n1");
    const std::string colleagues = directory / "colleagues.xml";
    setContent(colleagues, "<Enhancements><Task><OwnerId>1xS3BCk291UvhgP2dvNMKI</OwnerId><Title>Paint</Title><Hours>2</"
                           "Hours><State>done</State></Task>"
                           "<Task><Title>Clean</Title></Task><Mark/></Enhancements>");
    const std::string with = tasks + " with " + colleagues;
    EXPECT_EQ(run(with), "In " + colleagues +
                             ":\n1. Paint, done, 2 h\n2. Clean, open\n"
                             "1 of the kind Mark, which this program doesn't know\nOurs:\n1. Paint, done\n0");
    setContent(colleagues, "<Marks/>");
    EXPECT_EQ(run(with), colleagues + ": The root is Marks, not Enhancements.\nThat can't be done.\n1");
    std::string content = contentOf(store);
    setContent(store, content.replace(content.find("<Hours/>"), 8, "<Hours>two</Hours>"));
    EXPECT_EQ(run(tasks), "1. Paint, done\n   Hours isn't understood: two\n0");
}

TEST(Values, setsAndRestores) {
    const TemporaryDirectory directory;
    const std::string values = VALUES + (" " + std::string(OFFICE)) + " " + std::string(directory / "values.xml");
    const std::string between = R"(Fire rating: done
U value: done
U value in words: refused, it takes IfcThermalTransmittanceMeasure
Name with a slip: no such name, perhaps FireRating
Our own: done
Our own, on a wall: done, though it isn't one of the values to choose from, though the set is for other objects
Nothing any more: done
At the end:
)";
    const std::string none = "  FireRating = (none)\n  ThermalTransmittance = (none)\n  State = (none)\n";
    const std::string set = "  FireRating = F90\n  ThermalTransmittance = 0.25\n  State = to repair\n";
    EXPECT_EQ(run(values), "At the start:\n" + none + between + set + '0');
    EXPECT_EQ(run(values), "At the start:\n" + set + between + set + '0');
}

} // namespace
} // namespace orv::tests

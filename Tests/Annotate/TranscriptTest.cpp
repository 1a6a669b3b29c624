#include "Annotate/Program.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace annotate {
namespace {

/// What a shell prints for the command, output and errors as they come, and its status in brackets if that isn't 0.
std::string outcomeOf(const std::string& command) {
    FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r"); // NOLINT(cert-env33-c)
    if (pipe == nullptr) {
        throw std::runtime_error("no shell");
    }
    std::string printed;
    std::array<char, 4096> buffer{};
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        printed.append(buffer.data(), count);
    }
    std::erase(printed, '\r'); // of --csv
    const int status = ::pclose(pipe);
    return status == 0 ? printed : printed + '[' + std::to_string(WEXITSTATUS(status)) + "]\n";
}

/// Each transcript is a session as it would be typed, by Anna unless the line says otherwise, on a store that is there
/// from its first command to its last. The times of today are told as TIME.
class TranscriptTest : public ::testing::TestWithParam<const char*> {};

TEST_P(TranscriptTest, isWhatIsPrinted) {
    const std::filesystem::path file = std::filesystem::path(TRANSCRIPTS) / GetParam();
    const std::regex time("\\b20[0-9]{2}-[0-9]{2}-[0-9]{2}T[0-9:]{8}(\\.[0-9]+)?Z");
    const orv::tests::TemporaryDirectory directory;
    std::filesystem::copy_file(HOUSE, directory / "House.ifc");
    const std::string start = "cd " + (directory / "").string() + " && export ANNOTATE_AUTHOR=Anna PATH='" +
                              std::filesystem::path(program()).parent_path().string() + "':\"$PATH\" && ";
    std::ifstream transcript(file);
    std::string printed;
    std::string expected;
    for (std::string line; std::getline(transcript, line);) {
        expected += line + '\n';
        if (line.starts_with("$ ")) {
            printed += line + '\n' + std::regex_replace(outcomeOf(start + line.substr(2)), time, "TIME");
        } else if (line.empty() || line.starts_with("# ")) {
            printed += line + '\n';
        }
    }
    EXPECT_NE(expected, "");
    EXPECT_EQ(printed, expected);
}

INSTANTIATE_TEST_SUITE_P(Of, TranscriptTest,
                         ::testing::Values("definitions.txt", "notes.txt", "edits.txt", "export.txt", "earlier.txt",
                                           "filters.txt", "help.txt", "import.txt", "merged.txt", "move.txt",
                                           "report.txt", "status.txt", "topics.txt", "tables.txt"),
                         [](const auto& tested) {
                             const std::string name = tested.param;
                             return name.substr(0, name.find('.'));
                         });

} // namespace
} // namespace annotate

#include "Annotate/CommandTest.h"
#include "Utilities/FileLock.h"

#include <csignal>
#include <sstream>
#include <sys/resource.h>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::utilities::FileLock;

class NoteCommandsTest : public CommandTest {};

TEST_F(NoteCommandsTest, bringsNotesBackAfterARestartInOrderWithEveryCharacter) {
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
                        line.ends_with(std::string("Z\t\t\t") + shown))
                << line << shown;
        }
        EXPECT_EQ(lines.peek(), EOF);
        EXPECT_EQ(std::system((XMLLINT " --noout " + store).c_str()), 0);
        EXPECT_TRUE(contentOf(model) == content);
    }
}

TEST_F(NoteCommandsTest, tellsThatANoteDidNotGetIntoTheFile) {
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

} // namespace
} // namespace annotate

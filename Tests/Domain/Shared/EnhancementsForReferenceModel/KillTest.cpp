#include "Support/Kill.h"

#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"

#include <gtest/gtest.h>

#include <regex>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;
using utilities::FileLock;

/// Processes killed before every single call: what one leaves is what the next finds.
class KillTest : public StoreTest {};

TEST_F(KillTest, losesNoRecordOfALoadAndAnAddition) {
    const std::string other = "  <Other>&amp;</Other>\n";
    for (const std::string lineEnd : {"\n", "\n\n\n", ""}) {
        const bool isOrdinary = lineEnd == "\n";
        std::string elements;
        std::string texts;
        for (int number = 0; number < (isOrdinary ? 20 : 3); ++number) {
            elements += element(std::to_string(number)) + (number == 1 ? other : "");
            texts += std::to_string(number) + ' ';
        }
        const std::string usual = documentOf(elements);
        const std::string stored = isOrdinary ? usual : std::regex_replace(usual, std::regex("<\\?.*\\?>|\n"), lineEnd);
        bool isKilled = true;
        for (int call = 0; isKilled && !hasFailed(); ++call) {
            setContent(path, stored);
            isKilled = isKilledBefore(call, [] { add("new"); });
            EXPECT_TRUE(FileLock::tryLock(path, true, FileLock::Access::ReadWrite)) << "call " << call;
            const std::string loaded = inAnotherProcess(loadedTexts);
            EXPECT_TRUE(loaded == texts + "new " || (isKilled && loaded == texts)) << "call " << call << '\n' << loaded;
            EXPECT_NE(contentOf(path).find(other), std::string::npos) << "call " << call;
            EXPECT_EQ(fileCount(), 1) << "call " << call;
        }
    }
}

TEST_F(KillTest, losesNothingOfAChangeAndARemoval) {
    const std::vector<std::string> states = {"1 2 3 ", "1 two 3 ", "two 3 "};
    std::size_t reached = 0;
    bool isKilled = true;
    for (int call = 0; isKilled && !hasFailed(); ++call) {
        setContent(path, document({"1", "2", "3"}));
        isKilled = isKilledBefore(call, [] {
            loadedTexts();
            record(1).attributes = {{"Text", "two"}};
            Enhancements::saveChanges();
            Enhancements::takeRecord(record(0));
        });
        const std::string loaded = inAnotherProcess(loadedTexts);
        reached += reached + 1 < states.size() && loaded == states[reached + 1] ? 1 : 0;
        EXPECT_EQ(loaded, states[reached]) << "call " << call;
        EXPECT_EQ(fileCount(), 1) << "call " << call;
    }
    EXPECT_EQ(reached, 2U);
}

TEST_F(KillTest, losesNothingOfAForeignFile) {
    const std::string foreign = "<Enhancements>" + element("torn") + "  <Sample>";
    bool isKilled = true;
    for (int call = 0; isKilled && !hasFailed(); ++call) {
        directory.empty();
        setContent(path, foreign);
        isKilled = isKilledBefore(call, [] { add("new"); });
        const auto copies = keptCopies();
        EXPECT_TRUE(contentOf(path) == foreign || copies == std::vector{foreign}) << "call " << call;
        EXPECT_EQ(inAnotherProcess([] { return std::to_string(add("next")); }), "1") << "call " << call;
        EXPECT_FALSE(keptCopies().empty()) << "call " << call;
        for (const std::string& copy : keptCopies()) {
            // The space of a document that then wasn't written may be behind it.
            EXPECT_TRUE(copy.starts_with(foreign)) << "call " << call << '\n' << copy;
        }
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

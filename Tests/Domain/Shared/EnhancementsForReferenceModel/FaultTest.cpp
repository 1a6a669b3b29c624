#include "Support/StoreTest.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;
using utilities::SystemCalls;
using utilities::systemCalls;

/// What goes wrong.
struct Fault {
    int error; // 0 for a write of which only a part is done
    int count; // how many calls in a row
};

constexpr int forever = 1 << 20;
constexpr Fault faults[] = {{EINTR, 1},  {EINTR, 100},      {EIO, 1},    {EIO, forever},
                            {ENOSPC, 1}, {ENOSPC, forever}, {EDQUOT, 1}, {EDQUOT, forever},
                            {EACCES, 1}, {EACCES, forever}, {0, 1},      {0, forever}};

Fault fault{};
int callsAhead;
int failuresAhead;
std::string calls; // a letter for each, in the order in which they were made

/// Whether the present call is to fail.
bool fails(char letter) {
    calls += letter;
    if (callsAhead > 0) {
        --callsAhead;
        return false;
    }
    errno = fault.error;
    return failuresAhead-- > 0;
}

/// Puts a call in the place of another one that fails when it is to.
template <auto Call, char Letter>
struct Failing;
template <typename Result, typename... Arguments, Result (*SystemCalls::*Call)(Arguments...), char Letter>
struct Failing<Call, Letter> {
    static inline Result (*real)(Arguments...);
    static Result call(Arguments... arguments) { return fails(Letter) ? -1 : real(arguments...); }
    static void install() { real = std::exchange(systemCalls.*Call, call); }
};

ssize_t (*realWrite)(int, const void*, size_t, off_t);

ssize_t writePart(int descriptor, const void* content, size_t size, off_t position) {
    const bool isPart = fails('w');
    const ssize_t written = realWrite(descriptor, content, isPart ? (size + 1) / 2 : size, position);
    return isPart && fault.error != 0 ? -1 : written;
}

/// Makes as many calls fail as the fault says, after those that are to succeed.
void installFaults(const Fault& installed, int succeeding) {
    fault = installed;
    callsAhead = succeeding;
    failuresAhead = installed.count;
    realWrite = std::exchange(systemCalls.pwrite, writePart);
    if (installed.error != 0) {
        Failing<&SystemCalls::open, 'o'>::install();
        Failing<&SystemCalls::flock, 'l'>::install();
        Failing<&SystemCalls::stat, 'S'>::install();
        Failing<&SystemCalls::fstat, 's'>::install();
        Failing<&SystemCalls::pread, 'r'>::install();
        Failing<&SystemCalls::ftruncate, 'c'>::install();
        Failing<&SystemCalls::futimens, 't'>::install();
        Failing<&SystemCalls::fsync, 'y'>::install();
        Failing<&SystemCalls::rename, 'n'>::install();
    }
}

class FaultTest : public StoreTest {
protected:
    /// With each call failing in turn: a load with two additions, and a third one when all is well again. Every record
    /// that was taken has to be in the file then, and what was there before in the file or in a kept copy.
    void tryEachCall(const Fault& tried, const std::string& stored, const std::string& carried) {
        bool isReached = true;
        for (int call = 0; isReached; ++call) {
            SCOPED_TRACE("error " + std::to_string(tried.error) + " " + std::to_string(tried.count) +
                         " times from call " + std::to_string(call));
            directory.empty();
            setContent(path, stored);
            const std::string taken = inAnotherProcess([&] {
                installFaults(tried, call);
                std::string texts;
                for (const std::string text : {"1", "2"}) {
                    texts += add(text) ? text : "";
                }
                const bool hasFailed = failuresAhead < tried.count;
                failuresAhead = 0;
                return texts + (add("3") ? "3" : "") + (hasFailed ? "!" : "");
            });
            isReached = taken.ends_with('!');
            EXPECT_NE(taken.find('3'), std::string::npos);
            std::string added;
            for (const char text : taken.substr(0, taken.find('!'))) {
                added += element(std::string(1, text));
            }
            const auto copies = keptCopies();
            const bool isKept = std::find(copies.begin(), copies.end(), stored) != copies.end();
            const std::string content = contentOf(path);
            EXPECT_TRUE(content == documentOf(carried + added) || (isKept && content == documentOf(added)))
                << "taken " << taken << '\n'
                << content;
            EXPECT_EQ(fileCount(), 1 + std::ssize(copies));
        }
    }
};

TEST_F(FaultTest, losesNothingOfAStoredDocument) {
    const std::string carried = element("a") + "  <Other/>\n" + element("b");
    for (const Fault& each : faults) {
        tryEachCall(each, documentOf(carried), carried);
    }
}

TEST_F(FaultTest, losesNothingOfAForeignFile) {
    const std::string foreign = "<Foreign>" + std::string(100, ' ');
    for (const Fault& each : faults) {
        tryEachCall(each, foreign, foreign);
    }
}

TEST_F(FaultTest, makesFewCallsForAnOrdinaryAdditionAndSyncsACopyBeforeItWritesOverTheFile) {
    add("a");
    installFaults({EIO, 0}, 0);
    add("b");
    EXPECT_EQ(calls, "olsSwwctsl");
    setContent(path, "foreign");
    calls.clear();
    add("c");
    EXPECT_EQ(calls, "olsSosorrwynywwctsl") << "lock; make the copy, sync it, name it, sync that; reserve and write";
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

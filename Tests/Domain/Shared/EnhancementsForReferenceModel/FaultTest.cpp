#include "Support/StoreTest.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <system_error>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;
using utilities::SystemCalls;
using utilities::systemCalls;

/// What goes wrong.
struct Fault {
    std::errc error;         // none for a write of which only a part is done
    int count;               // how many calls in a row
    bool isOfWrites = false; // of no other calls
};

constexpr int forever = 1 << 20;
constexpr std::errc part{};
#ifdef _WIN32 // where a process takes a hundred times as long to start
constexpr Fault faults[] = {{std::errc::io_error, 1}, {std::errc::no_space_on_device, forever, true}};
#else
constexpr Fault faults[] = {{std::errc::interrupted, 1},
                            {std::errc::interrupted, 100},
                            {std::errc::io_error, 1},
                            {std::errc::io_error, forever},
                            {std::errc::no_space_on_device, 1},
                            {std::errc::no_space_on_device, forever},
                            {std::errc::permission_denied, 1},
                            {std::errc::permission_denied, forever},
                            {std::errc::io_error, 2, true},
                            {std::errc::no_space_on_device, forever, true},
                            {part, 1},
                            {part, forever}};
#endif

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
    return failuresAhead-- > 0;
}

/// Puts a call in the place of another one that fails when it is to.
template <auto Call, char Letter>
struct Failing;
template <typename... Arguments, std::errc (*SystemCalls::*Call)(Arguments...), char Letter>
struct Failing<Call, Letter> {
    static inline std::errc (*real)(Arguments...);
    static std::errc call(Arguments... arguments) { return fails(Letter) ? fault.error : real(arguments...); }
    static void install() { real = std::exchange(systemCalls.*Call, call); }
};

decltype(SystemCalls::writeAt) realWrite;

std::errc writePart(utilities::Handle file, std::string_view content, std::uint64_t position, std::size_t& written) {
    const bool isToFail = fails('w');
    if (isToFail) {
        content = content.substr(0, (content.size() + 1) / 2);
    }
    const std::errc outcome = realWrite(file, content, position, written);
    return isToFail && fault.error != part ? fault.error : outcome;
}

/// Makes as many calls fail as the fault says, after those that are to succeed.
void installFaults(const Fault& installed, int succeeding) {
    fault = installed;
    callsAhead = succeeding;
    failuresAhead = installed.count;
    realWrite = std::exchange(systemCalls.writeAt, writePart);
    if (installed.error != part && !installed.isOfWrites) {
        Failing<&SystemCalls::open, 'o'>::install();
        Failing<&SystemCalls::lock, 'l'>::install();
        Failing<&SystemCalls::unlock, 'u'>::install();
        Failing<&SystemCalls::getStateOf, 'S'>::install();
        Failing<&SystemCalls::getState, 's'>::install();
        Failing<&SystemCalls::readAt, 'r'>::install();
        Failing<&SystemCalls::setSize, 'c'>::install();
        Failing<&SystemCalls::setModificationTime, 't'>::install();
        Failing<&SystemCalls::takeAccess, 'a'>::install();
        Failing<&SystemCalls::sync, 'y'>::install();
        Failing<&SystemCalls::rename, 'n'>::install();
        Failing<&SystemCalls::remove, 'm'>::install();
        Failing<&SystemCalls::makeDirectory, 'd'>::install();
        Failing<&SystemCalls::readLink, 'k'>::install();
        Failing<&SystemCalls::list, 'L'>::install();
    }
}

class FaultTest : public StoreTest {
protected:
    /// Runs the action on the stored file in a process of its own, with each call failing in turn, and calls the check
    /// with what it returned. The action calls endFaults.
    void failEachCall(const Fault& tried, const std::string& stored, const std::function<std::string()>& action,
                      const std::function<void(const std::string&)>& check) {
        bool isReached = true;
        int call = 0;
        for (; isReached; ++call) {
            SCOPED_TRACE("error " + std::make_error_code(tried.error).message() + " " + std::to_string(tried.count) +
                         " times from call " + std::to_string(call));
            directory.empty();
            setContent(path, stored);
            if (!note.empty()) {
                setContent(directory / "store.xml.saving", note);
            }
            std::string outcome = inAnotherProcess([&] {
                installFaults(tried, call);
                const std::string told = action();
                return told + (hasFailed ? '!' : ' ');
            });
            ASSERT_FALSE(outcome.empty());
            isReached = outcome.back() == '!';
            outcome.pop_back();
            check(outcome);
            // A copy that isn't whole stays if it can't be removed.
            EXPECT_LE(fileCount(), 1 + std::ssize(keptCopies()) + (tried.count == forever ? 1 : 0));
        }
        EXPECT_GT(call, 3);
    }

    static void endFaults() {
        hasFailed = failuresAhead < fault.count;
        failuresAhead = 0;
    }

    bool isKept(const std::string& stored) const {
        const auto copies = keptCopies();
        return std::find(copies.begin(), copies.end(), stored) != copies.end();
    }

    /// A load with two additions, and a third one when all is well again. Every record that was taken has to be in the
    /// file then, and what was there before in the file or in a kept copy.
    void tryAdditions(const Fault& tried, const std::string& stored, const std::string& carried) {
        const auto addThree = [] {
            std::string taken;
            for (const std::string text : {"1", "2"}) {
                taken += add(text) ? element(text) : "";
            }
            endFaults();
            return taken + (add("3") ? element("3") : "");
        };
        failEachCall(tried, stored, addThree, [&](const std::string& taken) {
            EXPECT_TRUE(taken.ends_with(element("3")));
            const std::string content = contentOf(path);
            EXPECT_TRUE(content == documentOf(carried + taken) || (isKept(stored) && content == documentOf(taken)))
                << "taken " << taken << '\n'
                << content;
        });
    }

    /// A load and two additions. What was there, and every record of which it was said that it is on the disk, has to
    /// be what the next process loads.
    void tryDurableAdditions(const Fault& tried, const std::string& stored) {
        const auto addTwo = [] {
            std::string taken;
            for (const std::string text : {"1", "2"}) {
                std::vector<std::unique_ptr<EnhancementBase>> added;
                added.push_back(std::make_unique<SampleRecord>("Sample", TypedAttributes{{"Text", text}}));
                taken += Enhancements::addEnhancements(added) ? text + ' ' : "";
            }
            endFaults();
            return taken;
        };
        failEachCall(tried, stored, addTwo, [&](const std::string& taken) {
            const std::string loaded = inAnotherProcess(loadedTexts);
            if (isKept(stored)) {
                EXPECT_EQ(loaded, taken); // nothing could be loaded
            } else {
                EXPECT_EQ(loaded, "a b " + taken);
            }
        });
    }

    std::string note; // that stands beside the file

private:
    static inline bool hasFailed = false;
};

TEST_F(FaultTest, losesNothingOfAStoredDocument) {
    const std::string carried = element("a") + "  <Other/>\n" + element("b");
    for (const Fault& each : faults) {
        tryAdditions(each, documentOf(carried), carried);
    }
}

TEST_F(FaultTest, losesNothingOfAForeignFile) {
    const std::string foreign = "<Foreign>" + std::string(100, ' ');
    for (const Fault& each : faults) {
        tryAdditions(each, foreign, foreign);
    }
}

TEST_F(FaultTest, losesNothingThatItCalledStored) {
    for (const Fault& each : faults) {
        tryDurableAdditions(each, document({"a", "b"}));
    }
}

TEST_F(FaultTest, losesNothingOfWhatAnotherProgramLeftHalfDone) {
    setContent(path, document({"a", "b"}));
    inAnotherProcess([] {
        static int writesAhead = 2; // of the note, and of the space for the document
        realWrite = std::exchange(systemCalls.writeAt, [](utilities::Handle file, std::string_view content,
                                                          std::uint64_t position, std::size_t& written) {
            if (writesAhead-- == 0) {
                realWrite(file, content.substr(0, content.size() / 2), position, written);
                ::_exit(0);
            }
            return realWrite(file, content, position, written);
        });
        add(std::string(100, 'c'));
        return std::string();
    });
    const std::string torn = contentOf(path);
    note = contentOf(directory / "store.xml.saving");
    EXPECT_NE(note, "");
    for (const Fault& each : faults) {
        tryDurableAdditions(each, torn);
    }
    directory.empty();
    setContent(directory / "store.xml.saving", note);
    EXPECT_EQ(inAnotherProcess([] { return std::to_string(add("of a new document")); }), "1");
    EXPECT_EQ(inAnotherProcess(loadedTexts), "of a new document ");
}

TEST_F(FaultTest, losesNothingByAChangeAndARemoval) {
    const std::string carried = "  <Other/>\n";
    const std::string stored = documentOf(element("a") + carried + element("b") + element("c"));
    const auto changeAndRemove = [&] {
        const bool isLoaded = loadedTexts() == "a b c ";
        bool isRemoved = false;
        if (isLoaded) {
            record(0).attributes = {{"Text", "A"}};
            Enhancements::saveChanges();
            isRemoved = Enhancements::takeRecord(record(1)) != nullptr;
        }
        endFaults();
        const bool isSaved = Enhancements::saveChanges();
        const std::string elements = element("A") + carried + (isRemoved ? "" : element("b")) + element("c");
        return isSaved ? documentOf(isLoaded ? elements : "") : "not saved";
    };
    for (const Fault& each : faults) {
        failEachCall(each, stored, changeAndRemove, [&](const std::string& expected) {
            const bool isLoaded = expected != documentOf("");
            EXPECT_EQ(contentOf(path), isLoaded || isKept(stored) ? expected : stored);
        });
    }
}

TEST_F(FaultTest, makesFewCallsForAnOrdinaryAdditionAndSyncsACopyBeforeItWritesOverTheFile) {
    add("a");
    installFaults({std::errc::io_error, 0}, 0);
    add("b");
    EXPECT_EQ(calls, "olsSosoawyoywwtsycmu")
        << "lock; make the note, sync it and its name; reserve, write, sync; end the note";
    setContent(path, "foreign");
    calls.clear();
    add("c");
    EXPECT_EQ(calls, "olsSosrrsLSoawySnoysoawyoywwtsycmu") << "between: make the copy, sync it, name it, sync that";
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

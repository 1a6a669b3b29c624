#include "Support/Disk.h"
#include "Support/StoreTest.h"
#include "Utilities/SystemCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <regex>
#include <set>
#include <tuple>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using namespace tests;

/// The power fails after each operation of a scenario. Whatever that leaves on the disk, the next program finds all
/// that was stored.
class PowerTest : public StoreTest {
protected:
    PowerTest() { RecordProperty("seed", std::to_string(seed)); }

    /// Runs the scenario, for which all that is in the directory is on the disk, and judges each state that a failure
    /// could leave.
    template <typename Scenario>
    void failDuring(Scenario scenario) {
        if (isOnTheWay()) {
            return;
        }
        std::set<std::tuple<Disk::State, std::string, std::string>> failures;
        {
            const Disk disk(path.parent_path(), [&](const Disk& present) {
                for (const auto& state : present.states(dice, maximumStates)) {
                    failures.insert({state, stored, underWay});
                }
            });
            scenario();
        }
        EXPECT_GT(failures.size(), 10U);
        utilities::systemCalls.sync = [](utilities::Handle) { return utilities::done; }; // takes the time of the test
        for (const auto& [state, present, next] : failures) {
            judge(state, present, next);
            if (HasFailure()) {
                return;
            }
        }
    }

    /// Adds a record, which is there from its return on.
    void addStored(const std::string& text) {
        underWay = stored + text + ' ';
        EXPECT_TRUE(add(text));
        stored = underWay;
    }

    /// As a new process would load a file. Nothing of the process but the database knows it.
    static std::string loadedAnew(const std::filesystem::path& file) {
        EnhancementsFile::setFilePath(file);
        *Enhancements::getOrCreateEnhancementsDb() = Enhancements();
        EnhancementsFile::readFile();
        return loadedTexts();
    }

    void judge(const Disk::State& state, const std::string& present, const std::string& next) {
        const TemporaryDirectory found;
        std::string shown = "seed " + std::to_string(seed) + '\n';
        for (const auto& [name, content] : state) {
            std::filesystem::create_directories((found / name).parent_path());
            shown += name + ": " + std::to_string(content.size()) + '\n' + content + '\n';
            if (!name.ends_with('/')) {
                setContent(found / name, content);
            }
        }
        const auto file = found / store;
        const std::string loaded = loadedAnew(file);
        const auto reported = takeReports();
        EXPECT_TRUE(reported.empty() || (present.empty() && reported == Reports{emptyFile}));
        EXPECT_TRUE(loaded == present || loaded == next)
            << "loaded " << loaded << ", stored " << present << "or " << next << shown;
        EXPECT_TRUE(add("after"));
        EXPECT_EQ(loadedAnew(file), loaded + "after ") << shown;
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(file) += ".saving")) << shown;
        EXPECT_TRUE(foreign.empty() || isKept(found)) << shown;
    }

    bool isKept(const TemporaryDirectory& found) const {
        return std::any_of(std::filesystem::directory_iterator(found / "."), {}, [&](const auto& file) {
            return file.path().filename().string().starts_with("store.xml.kept-") && contentOf(file.path()) == foreign;
        });
    }

    static constexpr const char* emptyFile =
        "Source/Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile:67: "
        "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::read: "
        "You have got an empty file without header";

    const std::uint64_t seed = std::random_device()();
    std::mt19937_64 dice{seed};
    std::size_t maximumStates = 100;
    std::string store = "store.xml";
    std::string stored;
    std::string underWay;
    std::string foreign; // what a copy is to be kept of
};

TEST_F(PowerTest, losesNoAdditionToANewStore) {
    EnhancementsFile::setFilePath(directory / (store = "a/b/store.xml"));
    failDuring([this] {
        addStored("1");
        addStored("2");
    });
}

TEST_F(PowerTest, losesNothingOfAStoreThatIsAddedToAndChanged) {
    setContent(path, documentOf(element("1") + "  <Other/>\n" + element("2") + element(std::string(600, '3'))));
    underWay = stored = loadedAnew(path);
    failDuring([this] {
        addStored("4");
        SampleRecord& changed = record(0);
        changed.attributes = {{"Text", "one"}};
        underWay = "one" + stored.substr(1);
        EXPECT_TRUE(Enhancements::saveChanges());
        stored = underWay;
        underWay = stored.substr(4);
        EXPECT_TRUE(Enhancements::takeRecord(changed));
    });
}

TEST_F(PowerTest, losesNothingInALoadThatChangesTheLayout) {
    setContent(path, "<Enhancements>\n\n\t<Sample><Text>1</Text></Sample><Sample><Text>" + std::string(700, '2') +
                         "</Text></Sample>\t<Sample><Text>3</Text></Sample></Enhancements>");
    stored = "1 " + std::string(700, '2') + " 3 ";
    underWay = stored;
    failDuring([this] {
        EXPECT_EQ(loadedAnew(path), stored);
        addStored("4");
        addStored("5");
    });
}

TEST_F(PowerTest, losesNothingOfAForeignFile) {
    foreign = "<Foreign>" + std::string(600, 'x');
    setContent(path, foreign);
    failDuring([this] { addStored("1"); });
}

TEST_F(PowerTest, losesNothingWhileItPutsRightWhatAKilledProgramLeft) {
    maximumStates = 25; // of each of the many failures
    static int writesAhead;
    static const auto write = utilities::systemCalls.writeAt;
    const std::string text(600, 'x');
    const std::string usual = document({"1", text, text});
    const std::string foreignLayout = std::regex_replace(usual, std::regex("\n +"), "\t");
    struct Case {
        std::string stored;
        std::function<void()> save;
        int writes; // of a note and of the document, each of which is cut off in turn
    };
    const auto change = [] {
        record(0).attributes = {{"Text", "one and more"}};
        Enhancements::saveChanges();
    };
    const Case cases[] = {{usual, [] { add("2"); }, 3}, {usual, change, 3}, {foreignLayout, [] {}, 9}};
    for (const auto& [content, save, writes] : cases) {
        for (int number = 0; number < writes; ++number) {
            directory.empty();
            setContent(path, content);
            inAnotherProcess([&, &saved = save] {
                writesAhead = number;
                utilities::systemCalls.writeAt = [](utilities::Handle file, std::string_view piece,
                                                    std::uint64_t position, std::size_t& written) {
                    if (writesAhead-- == 0) {
                        write(file, piece.substr(0, piece.size() / 2), position, written);
                        ::_exit(0);
                    }
                    return write(file, piece, position, written);
                };
                loadedAnew(path);
                saved();
                ADD_FAILURE() << "ends before write " << number;
                return std::string();
            });
            underWay = stored = "1 " + text + ' ' + text + ' ';
            failDuring([this] {
                EXPECT_EQ(loadedAnew(path), stored);
                addStored("3");
            });
        }
    }
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

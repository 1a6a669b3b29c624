#include "Annotate/HouseTest.h"

#include <array>
#include <map>
#include <optional>
#include <random>
#include <sstream>

namespace annotate {
namespace {

/// What is stored, each note as "note 3" and each edit by its object and property, with what is shown of them.
using Stored = std::map<std::string, std::string>;

/// What a command makes of something; nothing if it isn't there.
struct Change {
    std::optional<std::string> before;
    std::optional<std::string> after;
};
using Changes = std::map<std::string, Change>;

std::vector<std::vector<std::string>> cellsOf(const std::string& output) {
    std::vector<std::vector<std::string>> rows;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream cells(line);
        rows.emplace_back();
        for (std::string cell; std::getline(cells, cell, '\t');) {
            rows.back().push_back(cell);
        }
    }
    return rows;
}

/// Commands of two people, taken at random, beside a simple account of what they should leave.
class WeekTest : public HouseTest {
protected:
    WeekTest() { RecordProperty("seed", std::to_string(seed)); }

    std::size_t upTo(std::size_t greatest) { return std::uniform_int_distribution<std::size_t>(0, greatest)(dice); }

    template <typename All>
    auto anyOf(const All& all) {
        return *std::next(std::begin(all), static_cast<std::ptrdiff_t>(upTo(std::size(all) - 1)));
    }

    Stored stored() const {
        Stored found;
        for (const auto& cells : cellsOf(runOn(store, {"notes"}).output)) {
            found["note " + cells.at(0)] = noteText(cells.at(1), cells.at(4), cells.at(5), cells.at(6), cells.at(10));
        }
        for (const auto& cells : cellsOf(runOn(store, {"edits"}).output)) {
            found[cells.at(0) + ' ' + cells.at(4)] = cells.at(6) + ", " + cells.at(8);
        }
        return found;
    }

    static std::string noteText(const std::string& id, const std::string& priority, const std::string& state,
                                const std::string& writer, const std::string& text) {
        return id + ", " + priority + ", " + state + ", " + writer + ", " + text;
    }

    std::optional<std::string> present(const std::string& name) const {
        const auto found = expected.find(name);
        return found == expected.end() ? std::nullopt : std::optional(found->second);
    }

    void become(const std::string& name, const std::optional<std::string>& text) {
        if (text) {
            expected[name] = *text;
        } else {
            expected.erase(name);
        }
    }

    /// Runs a command that changes that, which is what an undo of the person takes back from then on.
    void change(const std::vector<std::string>& command, Changes changes) {
        EXPECT_EQ(runOn(store, command).status, 0);
        std::erase_if(changes, [](const auto& each) { return each.second.before == each.second.after; });
        for (const auto& [name, each] : changes) {
            become(name, each.after);
        }
        if (!changes.empty()) {
            last[author] = changes;
        }
    }

    void addNote(const std::string& text) {
        const std::string id = anyOf(walls);
        const std::string priority = std::to_string(upTo(3));
        const std::string name = "note " + std::to_string(++lastNumber); // never one that was given before
        change({"note", id, text, "--priority", priority},
               {{name, {std::nullopt, noteText(id, priority, "open", author, text)}}});
    }

    /// Resolves, reopens or removes up to two of the notes.
    void changeNotes(const std::string& command) {
        Changes changes;
        std::vector<std::string> words{command};
        for (int count = 0; count < 2; ++count) {
            const auto any = anyOf(expected);
            if (any.first.starts_with("note ") && !changes.contains(any.first)) {
                const bool isResolved = any.second.find(", resolved, ") != std::string::npos;
                std::string text = any.second;
                if (command != "remove" && isResolved != (command == "resolve")) {
                    const std::string state = isResolved ? "resolved" : "open";
                    text.replace(text.find(state), state.size(), isResolved ? "open" : "resolved");
                }
                changes[any.first] = {any.second, command == "remove" ? std::nullopt : std::optional(text)};
                words.push_back(any.first.substr(5));
            }
        }
        if (!changes.empty()) {
            change(words, changes);
        }
    }

    void set(const std::vector<std::string>& ids, const std::string& value) {
        const std::string property = anyOf(properties);
        Changes changes;
        for (const std::string& id : ids) {
            const std::string name = id + ' ' + property;
            changes[name] = {present(name), value + ", " + author};
        }
        std::vector<std::string> words{"set", propertySet, property, value};
        if (ids.size() == 1) {
            words.insert(words.begin() + 1, ids.front());
        } else {
            words.insert(words.end(), {"--class", "IfcWall"});
        }
        change(words, changes);
    }

    void unset() {
        const std::string id = anyOf(walls);
        const std::string property = anyOf(properties);
        if (const auto before = present(id + ' ' + property)) {
            change({"unset", id, propertySet, property}, {{id + ' ' + property, {before, std::nullopt}}});
        }
    }

    /// Refused where somebody has changed the same since then.
    void undo() {
        const Outcome outcome = runOn(store, {"undo"});
        const bool isUnchanged = std::all_of(last[author].begin(), last[author].end(), [this](const auto& each) {
            return present(each.first) == each.second.after;
        });
        EXPECT_EQ(outcome.status == 0, isUnchanged && !last[author].empty()) << outcome.output << outcome.error;
        for (auto& [name, each] : last[author]) {
            if (isUnchanged) {
                std::swap(each.before, each.after);
                become(name, each.after);
            }
        }
    }

    static constexpr const char* propertySet = "Pset_WallCommon";
    const std::vector<std::string> properties{"AcousticRating", "FireRating", "Reference"};
    const std::uint64_t seed = std::random_device()();
    std::mt19937_64 dice{seed};
    std::vector<std::string> walls;
    std::string author;
    int lastNumber = 0;
    Stored expected;
    std::map<std::string, Changes> last; ///< By authors.
};

TEST_F(WeekTest, ofTwoPeopleLeavesWhatTheyDid) {
    for (const auto& cells : cellsOf(run({HOUSE, "objects", "--class", "IfcWall"}).output)) {
        walls.push_back(cells.front());
    }
    for (int step = 0; step < 120 && !HasFailure(); ++step) {
        author = anyOf(std::array{"Anna", "Ben"});
        ::setenv("ANNOTATE_AUTHOR", author.c_str(), 1);
        const std::string text = "text " + std::to_string(step);
        switch (expected.empty() ? 0 : upTo(9)) {
        case 0:
        case 1:
            addNote(text);
            break;
        case 2:
            changeNotes(anyOf(std::array{"resolve", "reopen", "remove"}));
            break;
        case 3:
        case 4:
            set({anyOf(walls)}, text);
            break;
        case 5:
            set(walls, text);
            break;
        case 6:
            unset();
            break;
        default:
            undo();
        }
        EXPECT_EQ(stored(), expected) << "seed " << seed << ", step " << step;
    }
}

} // namespace
} // namespace annotate

#include "Annotate/BarChart.h"
#include "Annotate/Commands.h"
#include "Annotate/EditIndex.h"
#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/Notes.h"
#include "Annotate/SetsOfObjects.h"
#include "Annotate/Table.h"
#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <unistd.h>

namespace annotate {

using Form = orv::host::PropertyEdit::Form;

namespace {

struct Vanished {
    std::size_t notes = 0;
    std::size_t edits = 0;
};

/// What there is on a model.
class Status {
public:
    explicit Status(const Arguments& arguments)
        : details(ModelDetails::read(arguments.model)), records(readStore(arguments)) {
        for (const auto& [number, note] : numberedNotes(records)) {
            take(*note);
        }
        const EditIndex edits(records);
        for (const EditIndex::Entry& entry : edits.getEntries()) {
            if (entry.edit.form != Form::Unset) {
                take(entry);
            }
        }
    }

    Counts totals() const {
        return {{"Objects", details.getModel().getObjects().size()},
                {"Open notes", openNotes},
                {"Resolved notes", resolvedNotes},
                {"Edits", editCount},
                {"Authors", authors.size()},
                {"Vanished objects", vanished.size()},
                {"Edits that the model has caught up with", caughtUp.size()}};
    }

    /// In the order of the model, and then those in no storey and on objects that aren't in it.
    Counts openByStorey() const {
        Counts counts;
        for (const ModelObject& object : details.getModel().getObjects()) {
            if (const auto found = storeys.find(&object); found != storeys.end()) {
                counts.emplace_back(object.name.empty() ? object.globalId : object.name, found->second);
            }
        }
        if (const auto found = storeys.find(nullptr); found != storeys.end()) {
            counts.emplace_back("(in no storey)", found->second);
        }
        if (openOnVanished > 0) {
            counts.emplace_back(classOf(nullptr), openOnVanished);
        }
        return counts;
    }

    /// The most first.
    Counts openByClass() const {
        Counts counts(classes.begin(), classes.end());
        std::stable_sort(counts.begin(), counts.end(),
                         [](const auto& a, const auto& b) { return a.second > b.second; });
        return counts;
    }

    std::vector<Row> vanishedRows() const {
        std::vector<Row> rows;
        for (const auto& [globalId, on] : vanished) {
            rows.push_back({globalId, std::to_string(on.notes), std::to_string(on.edits)});
        }
        return rows;
    }

    const std::vector<Row>& caughtUpRows() const { return caughtUp; }

private:
    void take(const Note& note) {
        const ModelObject* const object = details.getModel().find(note.ownerId);
        takeAuthor(note.author);
        ++(note.resolved ? resolvedNotes : openNotes);
        if (object == nullptr) {
            ++vanished[note.ownerId.toString(false)].notes;
        }
        if (!note.resolved) {
            ++classes[classOf(object)];
            ++(object == nullptr ? openOnVanished : storeys[storeyOf(*object)]);
        }
    }

    /// A storey is in itself.
    const ModelObject* storeyOf(const ModelObject& object) const {
        return object.ifcClass->name == "IfcBuildingStorey" ? &object : details.storeyOf(object);
    }

    void take(const EditIndex::Entry& entry) {
        const ModelObject* const object = details.getModel().find(entry.id);
        const std::string globalId = entry.id.toString(false);
        takeAuthor(entry.edit.author);
        ++editCount;
        if (object == nullptr) {
            ++vanished[globalId].edits;
            return;
        }
        const MergedProperty property = sets.find(*object, &entry, entry.edit.set, entry.edit.property);
        if (comparisonOf(property, details.getUnits()) == "same") {
            caughtUp.push_back(
                {globalId, entry.edit.set, entry.edit.property, editText(entry.edit), entry.edit.author});
        }
    }

    void takeAuthor(const std::string& author) {
        if (!author.empty()) {
            authors.insert(author);
        }
    }

    ModelDetails details;
    SetsOfObjects sets{details};
    Records records;
    std::size_t openNotes = 0;
    std::size_t resolvedNotes = 0;
    std::size_t editCount = 0;
    std::size_t openOnVanished = 0;
    std::set<std::string> authors;
    std::map<const ModelObject*, std::size_t> storeys; ///< Open notes; those in none with null.
    std::map<std::string, std::size_t> classes;
    std::map<std::string, Vanished> vanished;
    std::vector<Row> caughtUp;
};

/// The parts that have names.
constexpr const char* byStorey = "Open notes by storey";
constexpr const char* byClass = "Open notes by class";
constexpr const char* onVanished = "On objects that the model no longer has";
constexpr const char* hasCaughtUp = "Edits that the model has caught up with";

std::vector<Column> vanishedColumns() {
    return {{"GlobalId"}, {"Notes", true}, {"Edits", true}};
}

std::vector<Column> caughtUpColumns() {
    return {{"GlobalId"}, {"Property set"}, {"Property"}, {"Value"}, {"Author"}};
}

Counts printableCounts(Counts counts) {
    for (auto& [name, count] : counts) {
        name = printable(name);
    }
    return counts;
}

void printInTerminal(const Arguments& arguments, const Status& status) {
    const auto printChart = [](const char* title, const Counts& counts) {
        std::cout << (counts.empty() ? "" : std::string("\n") + title + '\n');
        for (const std::string& line : barChart(printableCounts(counts), terminalColumns())) {
            std::cout << line << '\n';
        }
    };
    const auto printRows = [&arguments](const char* title, const std::vector<Column>& columns, const auto& rows) {
        if (!rows.empty()) {
            std::cout << '\n' << title << '\n';
            printTable(arguments, columns, rows);
        }
    };
    for (const auto& [name, count] : status.totals()) {
        std::cout << name << ": " << count << '\n';
    }
    printChart(byStorey, status.openByStorey());
    printChart(byClass, status.openByClass());
    printRows(onVanished, vanishedColumns(), status.vanishedRows());
    printRows(hasCaughtUp, caughtUpColumns(), status.caughtUpRows());
}

/// Each line begins with what it is of.
void printInPipe(const Status& status) {
    const auto printCounts = [](const char* kind, const Counts& counts) {
        for (const auto& [name, count] : printableCounts(counts)) {
            std::cout << kind << '\t' << name << '\t' << count << '\n';
        }
    };
    const auto printRows = [](const char* kind, const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            std::cout << kind;
            std::for_each(row.begin(), row.end(), [](const auto& cell) { std::cout << '\t' << printable(cell); });
            std::cout << '\n';
        }
    };
    printCounts("total", status.totals());
    printCounts("storey", status.openByStorey());
    printCounts("class", status.openByClass());
    printRows("vanished", status.vanishedRows());
    printRows("caught up", status.caughtUpRows());
}

void printAsJson(const Status& status) {
    using Json = nlohmann::ordered_json;
    const auto objectsOf = [](const std::vector<Column>& columns, const std::vector<Row>& rows) {
        Json objects = Json::array();
        for (const Row& row : rows) {
            Json& object = objects.emplace_back(Json::object());
            for (std::size_t place = 0; place < columns.size(); ++place) {
                object[columns[place].name] =
                    columns[place].isNumber ? Json(std::stoull(row[place])) : Json(row[place]);
            }
        }
        return objects;
    };
    const auto countsOf = [](const char* name, const Counts& counts) {
        Json objects = Json::array();
        for (const auto& [counted, count] : counts) {
            objects.push_back({{name, counted}, {"Notes", count}});
        }
        return objects;
    };
    Json all;
    for (const auto& [name, count] : status.totals()) {
        all["Totals"][name] = count;
    }
    all[byStorey] = countsOf("Storey", status.openByStorey());
    all[byClass] = countsOf("Class", status.openByClass());
    all[onVanished] = objectsOf(vanishedColumns(), status.vanishedRows());
    all[hasCaughtUp] = objectsOf(caughtUpColumns(), status.caughtUpRows());
    std::cout << all.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

void showStatus(const Arguments& arguments) {
    const Status status(arguments);
    if (arguments.json) {
        printAsJson(status);
    } else if (::isatty(STDOUT_FILENO) != 0) {
        printInTerminal(arguments, status);
    } else {
        printInPipe(status);
    }
}

} // namespace annotate

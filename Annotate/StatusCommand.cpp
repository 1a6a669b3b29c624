#include "Annotate/AdditionsJson.h"
#include "Annotate/Commands.h"
#include "Annotate/Status.h"
#include "Annotate/System.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <iostream>

namespace annotate {

namespace {

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
    std::cout << jsonText(all);
}

} // namespace

void showStatus(const Arguments& arguments) {
    const Additions additions(arguments);
    const Status status(additions);
    if (arguments.json) {
        printAsJson(status);
    } else if (isTerminal(StandardStream::Output)) {
        printInTerminal(arguments, status);
    } else {
        printInPipe(status);
    }
}

} // namespace annotate

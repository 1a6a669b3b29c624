#include "Annotate/Table.h"

#include "Annotate/AdditionsJson.h"
#include "Annotate/CsvText.h"
#include "Annotate/System.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <iostream>

namespace annotate {

namespace {

Row printableRow(const Row& row) {
    Row shown;
    std::transform(row.begin(), row.end(), std::back_inserter(shown),
                   [](const std::string& cell) { return printable(cell); });
    return shown;
}

void printSeparated(const Row& row) {
    for (std::size_t column = 0; column < row.size(); ++column) {
        std::cout << (column > 0 ? "\t" : "") << row[column];
    }
    std::cout << '\n';
}

void printAligned(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows) {
        std::transform(row.begin(), row.end(), widths.begin(), widths.begin(),
                       [](const std::string& cell, std::size_t widest) { return std::max(widest, widthOf(cell)); });
    }
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column];
            if (column + 1 < row.size()) {
                line.append(widths[column] - widthOf(row[column]) + 2, ' ');
            }
        }
        std::cout << line << '\n';
    }
}

void printJson(const std::vector<Column>& columns, const std::vector<Row>& rows) {
    Json array = Json::array();
    for (const Row& row : rows) {
        Json object = Json::object();
        for (std::size_t column = 0; column < columns.size(); ++column) {
            Json& cell = object[columns[column].name];
            if (!columns[column].isNumber) {
                cell = row[column];
            } else if (!row[column].empty()) {
                cell = Json::parse(row[column], nullptr, false);
            }
        }
        array.push_back(std::move(object));
    }
    std::cout << jsonText(array);
}

} // namespace

Row namesOf(const std::vector<Column>& columns) {
    Row names;
    std::transform(columns.begin(), columns.end(), std::back_inserter(names),
                   [](const Column& column) { return column.name; });
    return names;
}

bool isForReaders(const Arguments& arguments) {
    return !arguments.csv && !arguments.json && isTerminal(StandardStream::Output);
}

void printTable(const Arguments& arguments, const std::vector<Column>& columns, const std::vector<Row>& rows) {
    if (arguments.json) {
        return printJson(columns, rows);
    }
    std::vector<Row> shown{namesOf(columns)};
    if (arguments.csv) {
        shown.insert(shown.end(), rows.begin(), rows.end());
        std::for_each(shown.begin(), shown.end(), [](const Row& row) { std::cout << csvLine(row); });
        return;
    }
    std::transform(rows.begin(), rows.end(), std::back_inserter(shown), printableRow);
    if (isForReaders(arguments)) {
        return printAligned(shown);
    }
    std::for_each(shown.begin() + 1, shown.end(), [](const Row& row) { printSeparated(row); });
}

} // namespace annotate

#include "Annotate/CsvText.h"

#include "Annotate/Arguments.h"
#include "Annotate/FormulaCell.h"
#include "Annotate/Utf8Text.h"

#include <algorithm>
#include <array>
#include <csv.h>
#include <new>

namespace annotate {

namespace {

/// Takes the first line off, with what ends it.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    text.remove_prefix(line.size());
    return line;
}

/// The one that stands most often in the line, outside of quotation marks.
char separatorIn(std::string_view line) {
    constexpr std::array<char, 3> separators{',', ';', '\t'};
    std::array<std::size_t, 3> counts{};
    bool isQuoted = false;
    for (const char character : line) {
        isQuoted = isQuoted != (character == '"');
        const auto* const found = std::find(separators.begin(), separators.end(), character);
        if (found != separators.end() && !isQuoted) {
            ++counts.at(static_cast<std::size_t>(found - separators.begin()));
        }
    }
    return separators.at(static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin()));
}

/// Like "sep=;", which some spreadsheets write above the header.
bool onlyTellsSeparator(std::string_view line) {
    constexpr std::string_view mark = "sep=";
    return line.starts_with(mark) && line.find_last_not_of("\r\n") == mark.size();
}

/// The parser of libcsv with what it has read.
class Parser {
public:
    explicit Parser(char separator) {
        ::csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
        ::csv_set_delim(&parser, static_cast<unsigned char>(separator));
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;
    ~Parser() { ::csv_free(&parser); }

    void parse(std::string_view line) {
        ++lines;
        begin = row.empty() && !isInRow() ? lines : begin;
        require(::csv_parse(&parser, line.data(), line.size(), takeCell, takeRow, this) == line.size());
    }

    std::vector<CsvRow> finish() {
        require(::csv_fini(&parser, takeCell, takeRow, this) == 0);
        return std::move(rows);
    }

private:
    /// Whether a cell is open, at the end of a line.
    bool isInRow() const { return parser.quoted != 0; }

    void require(bool isParsed) const {
        if (isParsed) {
            return;
        }
        if (::csv_error(&parser) != CSV_EPARSE) {
            throw std::bad_alloc();
        }
        throw RequestError("Line " + std::to_string(begin) +
                           ": a quotation mark isn't where one can be. A cell that has some stands in quotation marks "
                           "as a whole, with those inside doubled.");
    }

    static void takeCell(void* cell, std::size_t size, void* self) {
        static_cast<Parser*>(self)->row.push_back(unshieldedCell({static_cast<const char*>(cell), size}));
    }

    static void takeRow(int /*end*/, void* self) {
        auto& parser = *static_cast<Parser*>(self);
        const auto isEmpty = [](const std::string& cell) { return cell.empty(); };
        if (!std::all_of(parser.row.begin(), parser.row.end(), isEmpty)) {
            parser.rows.push_back({parser.begin, std::move(parser.row)});
        }
        parser.row.clear();
        parser.begin = parser.lines;
    }

    mutable ::csv_parser parser{};
    std::size_t lines = 0;
    std::size_t begin = 1; // of the row
    std::vector<std::string> row;
    std::vector<CsvRow> rows;
};

std::string quoted(const std::string& cell) {
    constexpr std::string_view blanks = " \t"; // at the ends of a cell, which many programs take away
    const bool hasEnds = !cell.empty() && (blanks.find(cell.front()) != std::string_view::npos ||
                                           blanks.find(cell.back()) != std::string_view::npos);
    if (!hasEnds && cell.find_first_of("\",;\t\r\n") == std::string::npos) {
        return cell;
    }
    std::string text = "\"";
    for (const char character : cell) {
        text.append(character == '"' ? 2 : 1, character);
    }
    return text + '"';
}

} // namespace

std::vector<CsvRow> readCsv(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    std::string_view rest = text;
    for (std::size_t number = 1; !rest.empty(); ++number) {
        const std::string_view line = takeLine(rest);
        if (!isUtf8(line)) {
            throw RequestError("Line " + std::to_string(number) +
                               " isn't in UTF-8. Save the file in UTF-8, which spreadsheets call Unicode.");
        }
        if (line.find('\0') != std::string_view::npos) {
            throw RequestError("Line " + std::to_string(number) +
                               " has a NUL character, which no text has. Take it out, or save the file in UTF-8 if it "
                               "is in UTF-16.");
        }
    }
    rest = text;
    const std::string_view first = takeLine(rest);
    Parser parser(separatorIn(first));
    while (!text.empty()) {
        parser.parse(takeLine(text));
    }
    std::vector<CsvRow> rows = parser.finish();
    if (onlyTellsSeparator(first)) {
        rows.erase(rows.begin());
    }
    return rows;
}

std::string csvLine(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& cell : cells) {
        line.append(&cell == &cells.front() ? "" : ",").append(quoted(shieldedCell(cell)));
    }
    return line + "\r\n";
}

} // namespace annotate

#include "Annotate/CsvText.h"

#include "Annotate/Arguments.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

/// A line for each row, with its number and its cells in brackets; or the refusal, up to its first full stop.
std::string parsed(std::string_view text) {
    std::string shown;
    try {
        for (const CsvRow& row : readCsv(text)) {
            shown += std::to_string(row.line);
            for (const std::string& cell : row.cells) {
                shown.append("[").append(cell).append("]");
            }
            shown += '\n';
        }
    } catch (const RequestError& error) {
        shown = error.what();
        shown.resize(shown.find('.') + 1);
    }
    return shown;
}

TEST(CsvText, hasRowsWithTheLinesWhereTheyBegin) {
    const std::pair<std::string_view, std::string_view> texts[] = {
        {"", ""},
        {"a,b\nc,d\n", "1[a][b]\n2[c][d]\n"},
        {"a,b\r\nc,d", "1[a][b]\n2[c][d]\n"},
        {"a,b\rc,d\r", "1[a][b]\n2[c][d]\n"},
        {"\xEF\xBB\xBF\"a\",b\n", "1[a][b]\n"},
        {"a,b\n\n,\nc,\n", "1[a][b]\n4[c][]\n"},
        {"a,\"b\n\nc\"\nd,e\n", "1[a][b\n\nc]\n4[d][e]\n"},
        {"\n\na,b\n\"c\r\nd\",\ne,f", "3[a][b]\n4[c\r\nd][]\n6[e][f]\n"},
        {"a, b c ,\" d \"\n", "1[a][b c][ d ]\n"},
        {"a,\"say \"\"no\"\"\",\"\"\n", "1[a][say \"no\"][]\n"},
    };
    for (const auto& [text, rows] : texts) {
        EXPECT_EQ(parsed(text), rows) << text;
    }
}

TEST(CsvText, hasTheSeparatorThatItsFirstLineHasMostOutsideOfQuotationMarks) {
    const std::pair<std::string_view, std::string_view> texts[] = {
        {"a;b\n1,5;2\n", "1[a][b]\n2[1,5][2]\n"},
        {"a\tb,c\td\ne\tf\n", "1[a][b,c][d]\n2[e][f]\n"},
        {"\"a,b,c,d\";e\n", "1[a,b,c,d][e]\n"},
        {"a,b\nc;d;e\n", "1[a][b]\n2[c;d;e]\n"},
        {"a;b,c\n", "1[a;b][c]\n"},
        {"alone\nx;y\n", "1[alone]\n2[x;y]\n"},
        {"sep=;\r\na,b;c\n", "2[a,b][c]\n"},
        {"sep=ab;c\n", "1[sep=ab][c]\n"},
    };
    for (const auto& [text, rows] : texts) {
        EXPECT_EQ(parsed(text), rows) << text;
    }
}

TEST(CsvText, isRefusedWithTheLine) {
    const std::pair<std::string_view, std::string_view> texts[] = {
        {"a,b\nc,\xff\n", "Line 2 isn't in UTF-8."},
        {std::string_view("a,b\r\nc\0,d", 9), "Line 2 has a NUL character, which no text has."},
        {std::string_view("\xff\xfe\x61\0", 4), "Line 1 isn't in UTF-8."},
        {"a,b\nc,d \"e\"\n", "Line 2: a quotation mark isn't where one can be."},
        {"a,b\n\"c\" d,e\n", "Line 2: a quotation mark isn't where one can be."},
        {"a,b\nc,d\ne,\"f\n\n\ng", "Line 3: a quotation mark isn't where one can be."},
    };
    for (const auto& [text, refusal] : texts) {
        EXPECT_EQ(parsed(text), refusal) << text;
    }
}

} // namespace
} // namespace annotate

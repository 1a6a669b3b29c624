#include "Annotate/ItemText.h"

#include <gtest/gtest.h>

namespace annotate {

namespace {

using Items = std::vector<std::string>;

struct Written {
    std::string text;
    Items items;
};

std::string textOf(const Items& items, bool areRows) {
    return itemsText({items.begin(), items.end()}, areRows);
}

TEST(ItemText, isReadAsTheItemsThatItWasMadeOf) {
    const Written lists[] = {
        {"a", {"a"}},
        {"a;b", {"a", "b"}},
        {R"(a\;b;c\\d;e=f)", {"a;b", R"(c\d)", "e=f"}},
        {R"(\;;\\;;\\\;;\\=)", {";", R"(\)", "", R"(\;)", R"(\=)"}},
        {R"(a\\;\\n;\\\\)", {R"(a\)", R"(\n)", R"(\\)"}},
    };
    for (const auto& [text, items] : lists) {
        EXPECT_EQ(textOf(items, false), text);
        EXPECT_EQ(itemsIn(text), items) << text;
    }
    const Written tables[] = {
        {"a=b", {"a", "b"}},
        {"1=2.5;3=4", {"1", "2.5", "3", "4"}},
        {R"(a\=b\;c=d\\;=\==;\;=)", {"a=b;c", R"(d\)", "", "==", ";", ""}},
    };
    for (const auto& [text, items] : tables) {
        EXPECT_EQ(rowItemsIn(text), items) << text;
    }
    EXPECT_EQ(textOf({"a=b;c", R"(d\)", "", "==", ";", ""}, true), R"(a\=b\;c=d\\;=\=\=;\;=)");
}

TEST(ItemText, isReadAsItStandsWhereABackslashMeansNothing) {
    const Written lists[] = {
        {R"(C:\temp\;b)", {R"(C:\temp;b)"}},
        {R"(a\)", {R"(a\)"}},
        {R"(\n;)", {R"(\n)", ""}},
        {R"(\=)", {"="}},
    };
    for (const auto& [text, items] : lists) {
        EXPECT_EQ(itemsIn(text), items) << text;
    }
    EXPECT_EQ(rowItemsIn("a=b=c"), (Items{"a", "b=c"}));
    EXPECT_EQ(rowItemsIn("a=b;c"), std::nullopt);
    EXPECT_EQ(rowItemsIn(R"(a\=b)"), std::nullopt);
}

} // namespace
} // namespace annotate

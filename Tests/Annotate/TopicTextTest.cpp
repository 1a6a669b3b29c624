#include "Annotate/TopicText.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

TEST(TopicTextTest, isATitleAndWhatTheTitleDoesNotSay) {
    const std::string letters(119, 'a');
    struct Case {
        std::string text;
        std::string title;
        std::string description;
        std::string again; ///< Empty: as the text.
    };
    const Case cases[] = {
        {"Short", "Short", "", ""},
        {" Short", "Short", " Short", ""},
        {"\n First \nsecond", "First", "\n First \nsecond", ""},
        {letters + "b", letters + "b", "", ""},
        {letters + "bc", letters + "b…", letters + "bc", ""},
        {letters + "\u00fc", letters + "…", letters + "\u00fc", ""}, // whose second byte is the 121st
        {"one " + letters, "one…", "one " + letters, ""},
        {" \n ", "(blank)", " \n ", ""},
        {"Ends in…", "Ends in…", "", ""},
    };
    for (const Case& each : cases) {
        const TitledText titled = titledText(each.text);
        EXPECT_EQ(titled.title, each.title);
        EXPECT_EQ(titled.description, each.description) << each.title;
        EXPECT_EQ(textOf(titled), each.again.empty() ? each.text : each.again);
    }
    EXPECT_EQ(textOf({"Clash", "A pipe in a wall"}), "Clash\n\nA pipe in a wall");
    EXPECT_EQ(textOf({"Clash ", " Clash of pipes"}), " Clash of pipes");
    EXPECT_EQ(textOf({"", "No title"}), "No title");
}

TEST(TopicTextTest, mayEndWithTheObjectThatItIsOn) {
    struct Case {
        std::string description;
        std::string globalId;
        std::string rest;
    };
    const Case cases[] = {
        {"A\n\nObject: IfcWall W, GlobalId 1jXyBr6EAquR0PHYXIrQ4_", "1jXyBr6EAquR0PHYXIrQ4_", "A"},
        {"A\n\nObject: a, GlobalId b, GlobalId 1jXyBr6EAquR0PHYXIrQ4_\n", "1jXyBr6EAquR0PHYXIrQ4_", "A"},
        {"A\n\nObject: IfcWall W, GlobalId 1jXyBr6EAquR0PHYXIrQ4_ more", "",
         "A\n\nObject: IfcWall W, GlobalId 1jXyBr6EAquR0PHYXIrQ4_ more"},
        {"GlobalId 1jXyBr6EAquR0PHYXIrQ4_", "", "GlobalId 1jXyBr6EAquR0PHYXIrQ4_"},
        {", GlobalId 1jXyBr6EAquR0PHYXIrQ4_\n\nObject: none", "", ", GlobalId 1jXyBr6EAquR0PHYXIrQ4_\n\nObject: none"},
    };
    for (const Case& each : cases) {
        std::string description = each.description;
        EXPECT_EQ(takeObjectLine(description), each.globalId) << each.description;
        EXPECT_EQ(description, each.rest);
    }
    EXPECT_EQ(objectLine("IfcWall W", "1jXyBr6EAquR0PHYXIrQ4_"),
              "\n\nObject: IfcWall W, GlobalId 1jXyBr6EAquR0PHYXIrQ4_");
}

} // namespace
} // namespace annotate

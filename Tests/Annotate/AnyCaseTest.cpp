#include "Annotate/AnyCase.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

struct Compared {
    std::string_view text;
    std::string_view other;
    bool isIn;
    bool equals;
};

TEST(AnyCase, findsTextsOfAnyScript) {
    const Compared rows[] = {
        {"", "", true, true},
        {"", "\xff", true, false},
        {"South", "north to SOUTH", true, false},
        {"STRASSE", "Lange Stra\u00dfe", true, false},
        {"stra\u00dfe", "STRASSE", true, true},
        {"\u1e9e", "ss", true, true},
        {"E\u0301TAGE", "\u00e9tage", true, true},
        {"\u00e9tage", "Premier E\u0301tage", true, false},
        {"etage", "\u00e9tage", false, false},
        {"e", "e\u0301", false, false},
        {"\u03a3\u038f\u039c\u0391\u03a3", "\u03c3\u03ce\u03bc\u03b1\u03c2", true, true},
        {"\u1fb4", "\u0391\u0345\u0301", true, true},
        {"\u042d\u0422\u0410\u0416", "\u044d\u0442\u0430\u0436 2", true, false},
        {"\u212a", "k", true, true},
        {"\u68af", "\u968e\u68af", true, false},
        {"\xfc", "\u00fc", false, false},
        {"\xfc", "a\xfc", false, false},
        {"\xfc", "\xfc", false, true},
        {"a", "a\xc0\x80", false, false},
        {"\xed\xa0\x80", "\ufffd", false, false},
        {std::string_view("a\0b", 3), std::string_view("xA\0B", 4), true, false},
    };
    for (const auto& [text, other, isIn, equals] : rows) {
        EXPECT_EQ(AnyCase(text).isIn(other), isIn) << text << " in " << other;
        EXPECT_EQ(AnyCase(text).equals(other), equals) << text << " = " << other;
    }
}

} // namespace
} // namespace annotate

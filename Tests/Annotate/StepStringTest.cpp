#include "Annotate/StepString.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

TEST(StepString, decodesToUtf8) {
    const std::pair<std::string_view, std::string_view> literals[] = {
        // clang-format off
        {"", ""}, {"plain", "plain"}, {"Owner''s", "Owner's"}, {R"(a\\b\\\\)", R"(a\b\\)"},
        {R"(caf\X\E9)", "caf\u00e9"}, {R"(\X2\004B00FC20AC\X0\!)", "K\u00fc\u20ac!"},
        {R"(\X2\D83CDF31\X0\)", "\U0001f331"}, {R"(\X2\D83C\X0\-\X2\DF31D83C\X0\)", "\ufffd-\ufffd\ufffd"},
        {R"(\X4\0001F33100000041\X0\)", "\U0001f331A"}, {R"(\X4\00110000FFFFFFFF\X0\)", "\ufffd\ufffd"},
        {R"(K\S\|che \S\'')", "K\u00fcche \u00a7"}, {R"(\PB\\S\|\S\#\PA\\S\|)", "\u00fc\u0141\u00fc"},
        {R"(\PC\\S\&\S\%\PD\\S\$\S\~)", "\u0124\ufffd\u00a4\u016b"},
        {R"(\PE\\S\@\S\0\S\p\PF\\S\A\S\!)", "\u0420\u0410\u2116\u0621\ufffd"},
        {R"(\PG\\S\a\S\4\PH\\S\`\S\z\PI\\S\}\S\P\S\ )", "\u03b1\u0384\u05d0\u05ea\u0131\u011e\u00a0"},
        {"\\X2\\00\r\nFC\\X0\\\n", "\u00fc"}, {"K\u00fcche \U0001f331", "K\u00fcche \U0001f331"},
        {"K\xfc\x63he", "K\u00fcche"}, {"\u00fc\xfc", "\u00c3\u00bc\u00fc"},
        {"\xc0\x80\xed\xa0\x80", "\u00c0\u0080\u00ed\u00a0\u0080"}, {R"(C:\temp\X)", R"(C:\temp\X)"},
        {R"(\X\G1 \X2\00F\X0\ \X2\0041 \X4\41\X0\ \PJ\ \S\)", R"(\X\G1 \X2\00F\X0\ \X2\0041 \X4\41\X0\ \PJ\ \S\)"},
        // clang-format on
    };
    for (const auto& [literal, text] : literals) {
        EXPECT_EQ(decodeString(literal), text) << literal;
    }
}

} // namespace
} // namespace annotate

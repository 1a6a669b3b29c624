#include "Annotate/HtmlText.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

TEST(HtmlText, canBeNothingButText) {
    const std::pair<std::string_view, std::string_view> texts[] = {
        {"", ""},
        {"plain", "plain"},
        {"</p><script>", "&lt;/p&gt;&lt;script&gt;"},
        {R"(" onclick='x' & &amp;)", "&quot; onclick=&#39;x&#39; &amp; &amp;amp;"},
        {"K\u00fcche \U0001f331", "K\u00fcche \U0001f331"},
    };
    for (const auto& [text, html] : texts) {
        EXPECT_EQ(htmlText(text), html);
    }
}

TEST(HtmlText, showsWhatNoPageCanHave) {
    const std::pair<std::string_view, std::string_view> texts[] = {
        {"a\tb\nc", "a\tb\nc"},
        {"a\r\nb", "a\nb"},
        {"a\rb\r", "a\u240db\u240d"},
        {"\r\r\n", "\u240d\n"},
        {std::string_view("\0\x1b[0m", 5), "\u2400\u241b[0m"},
        {"\x1f\x7f", "\u241f\u2421"},
        {"\xc2\x80\xc2\x9f\xc2\xa0", "\ufffd\ufffd\u00a0"},
        {"a\xff\xc3(", "a\ufffd\ufffd("},
        {"\xe2\x82", "\ufffd\ufffd"},
    };
    for (const auto& [text, html] : texts) {
        EXPECT_EQ(htmlText(text), html);
    }
}

} // namespace
} // namespace annotate

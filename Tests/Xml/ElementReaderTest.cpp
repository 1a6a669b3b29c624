#include "Xml/ElementReader.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace orv::xml {
namespace {

TEST(XmlElementReader, takesAnElementApart) {
    ElementReader reader;
    const auto parts = reader.read("<e_x0020_ a = '&lt;'\tx:b='\xC3\xA4'>\n <!--1-->\n t <A>a</A>\r\n"
                                   "<B_x0020_C/><?p d?><![CDATA[x]]><D e=''/> <!--2--> </e_x0020_ >");
    ASSERT_TRUE(parts && parts->children.size() == 3);
    EXPECT_EQ(parts->name, "e ");
    EXPECT_EQ(parts->attributes, " a=\"&lt;\" x:b=\"\xC3\xA4\"");
    EXPECT_EQ(parts->children[0].ahead, "<!--1-->\n t");
    EXPECT_EQ(parts->children[0].markup, "<A>a</A>");
    EXPECT_EQ(parts->children[1].ahead, "");
    EXPECT_EQ(parts->children[1].markup, "<B_x0020_C/>");
    EXPECT_EQ(parts->children[1].name, "B C");
    EXPECT_EQ(parts->children[2].ahead, "<?p d?><![CDATA[x]]>");
    EXPECT_EQ(parts->children[2].markup, "<D e=''/>");
    EXPECT_EQ(parts->behind, "<!--2-->");
    const auto empty = reader.read("<e/>");
    ASSERT_TRUE(empty && empty->children.empty());
    EXPECT_EQ(empty->attributes + std::string(empty->behind), "");
    EXPECT_EQ(reader.read("<e> <!----> </e>")->behind, "<!---->");
}

TEST(XmlElementReader, readsTheValueOfTheFirstChildNode) {
    struct {
        std::string child;
        std::optional<std::string> text;
        bool isPlain;
    } const cases[] = {
        {"<A/>", std::nullopt, true},
        {"<A></A >", std::nullopt, true},
        {"<A><![CDATA[]]></A>", "", true},
        {"<A> \r\n</A>", " \n", true},
        {"<A>a&lt;<![CDATA[<b>]]>&#x41;_x0041__x005F_</A>", "a<<b>AA_", true},
        {"<A>_x00<![CDATA[41_]]></A>", "A", true},
        {"<A>_x00<!---->41_</A>", "_x00", false},
        {"<A><!--_x0041_--></A>", "_x0041_", false},
        {"<A><!--c-->t</A>", "c", false},
        {"<A><?p _x0041_?>t</A>", "_x0041_", false},
        {"<A><B>b</B>t</A>", "", false},
        {"<A>t<B/></A>", "t", false},
        {"<A>t<?p?></A>", "t", false},
        {"<A>t<B>b<C/></B>u</A>", "t", false},
        {"<A b='1'>t</A>", "t", false},
        {"<A b='1'/>", std::nullopt, false},
    };
    ElementReader reader;
    for (const auto& [child, text, isPlain] : cases) {
        const std::string markup = "<e><Z>z</Z>" + child + "</e>";
        const auto parts = reader.read(markup);
        ASSERT_TRUE(parts && parts->children.size() == 2) << child;
        EXPECT_EQ(parts->children[1].text, text) << child;
        EXPECT_EQ(parts->children[1].isPlain, isPlain) << child;
        EXPECT_EQ(parts->children[1].markup, child);
    }
}

TEST(XmlElementReader, refusesWhatIsNotOneElement) {
    ElementReader reader;
    const std::string utf16("<\0e\0/\0>\0", 8);
    const std::string refused[] = {"",
                                   "t",
                                   "<e>",
                                   "<e></f>",
                                   "<e/> ",
                                   " <e/>",
                                   "<e/><e/>",
                                   "<!--c--><e/>",
                                   "<e/><?p?>",
                                   "<!DOCTYPE e><e/>",
                                   "<?xml version='1.0'?><e/>",
                                   "<e>&undeclared;</e>",
                                   "<e><?xml?></e>",
                                   "<e>\xE4</e>",
                                   "<e a='1' a='2'/>",
                                   utf16};
    for (const std::string& markup : refused) {
        EXPECT_FALSE(reader.read(markup)) << markup;
        EXPECT_EQ(reader.read("<e><A>a</A></e>")->children.size(), 1U) << markup;
    }
}

} // namespace
} // namespace orv::xml

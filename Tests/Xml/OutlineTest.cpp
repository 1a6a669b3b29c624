#include "Xml/Outline.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orv::xml {
namespace {

TEST(XmlOutline, showsTheMarkupOfElementsAndOfWhatIsAroundThemAsItStood) {
    const std::vector<std::pair<std::string, std::string>> parts = {
        {"t &amp;<![CDATA[<]]> &#x41;", "<x:e a = '1'\tb=\"&#10;>\" ><f/> \r\n<!-- c --></x:e >"},
        {"<?pi d?> \n<!--c-->", "<e_x0041_/>"},
        {"", "<g>\n</g>"}};
    std::string content;
    for (const auto& [ahead, element] : parts) {
        content += "\n " + ahead + '\t' + element;
    }
    const std::string document = "<!-- 1 -->\n<?pi?> <r xmlns:x='u'>" + content + " L\xC3\xA4nge </r> <!-- 2 -->\n";
    const auto outline = Outline::parse(document);
    ASSERT_TRUE(outline && outline->size() == parts.size());
    EXPECT_EQ(outline->getSource(), document);
    EXPECT_EQ(outline->getRootName(), "r");
    EXPECT_EQ(outline->getContent(), content.substr(2) + " L\xC3\xA4nge");
    for (std::size_t number = 0; number < parts.size(); ++number) {
        const Outline::Part part = (*outline)[number];
        EXPECT_EQ(part.ahead, parts[number].first);
        EXPECT_EQ(part.element, parts[number].second);
        EXPECT_TRUE(outline->getContent().ends_with(part.behind));
        const std::string next =
            number + 1 < parts.size() ? parts[number + 1].first + parts[number + 1].second : "L\xC3";
        EXPECT_EQ(part.behind.substr(0, 2), next.substr(0, 2));
    }
    EXPECT_EQ((*outline)[0].getName(), "x:e");
    EXPECT_EQ((*outline)[1].getName(), "eA");
    EXPECT_EQ(outline->getSurroundings().before, "<!-- 1 -->\n<?pi?>");
    EXPECT_EQ(outline->getSurroundings().rootAttributes, " xmlns:x=\"u\"");
    EXPECT_EQ(outline->getSurroundings().after, "<!-- 2 -->");
}

TEST(XmlOutline, showsMarkupThatNeedsNoDeclarations) {
    const std::string document = "<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE r [<!-- no --><?no no?>"
                                 "<!ENTITY e 'x&#38;lt;<f b=\"&#38;amp;\"/>'><!ENTITY v '1&#34;2'>"
                                 "<!ENTITY b ']]&#13;'><!ATTLIST g c CDATA 'd'>]><r><g a='&v;'>&e;<!--\xE4-->&b;></g>"
                                 "<h><![CDATA[]]></h></r>";
    const auto outline = Outline::parse(document);
    ASSERT_TRUE(outline);
    EXPECT_EQ(outline->getSource(), document);
    EXPECT_EQ(outline->getContent(), "<g a=\"1&quot;2\" c=\"d\">x&lt;<f b=\"&amp;\"></f><!--\xC3\xA4-->]]&#13;&gt;</g>"
                                     "<h><![CDATA[]]></h>");
    EXPECT_EQ(outline->getSurroundings().before, "");
}

TEST(XmlOutline, showsTheSameContentInAllEncodings) {
    const std::string utf16 = "<r> \xE4 <e/><!---->\xE4</r>";
    std::string littleEndian = "\xFF\xFE";
    std::string bigEndian;
    for (const char byte : utf16) {
        littleEndian += {byte, '\0'};
        bigEndian += {'\0', byte};
    }
    const std::string documents[] = {
        "<r> \xC3\xA4 <e/><!---->\xC3\xA4</r>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='Utf-8'?><r> \xC3\xA4 <e/><!---->\xC3\xA4</r>",
        "\xEF\xBB\xBF<r> \xC3\xA4 <e/><!---->\xC3\xA4</r>",
        "<?xml version='1.0' encoding='ISO-8859-1'?><r> \xE4 <e/><!---->\xE4</r>",
        littleEndian,
        bigEndian};
    for (const std::string& document : documents) {
        const auto outline = Outline::parse(document);
        ASSERT_TRUE(outline && outline->size() == 1) << document;
        EXPECT_EQ(outline->getSource(), document);
        EXPECT_EQ(outline->getContent(), "\xC3\xA4 <e/><!---->\xC3\xA4");
        EXPECT_EQ((*outline)[0].ahead, "\xC3\xA4");
        EXPECT_EQ((*outline)[0].element, "<e/>");
    }
}

TEST(XmlOutline, isNotMadeForNamesThatOtherEncodingsAloneAllow) {
    for (const std::string document : {"<r><e\xBA/></r>", "<r \xB5='1'/>", "<r/><?p\xAA?>"}) {
        EXPECT_FALSE(Outline::parse("<?xml version='1.0' encoding='ISO-8859-1'?>" + document)) << document;
    }
}

} // namespace
} // namespace orv::xml

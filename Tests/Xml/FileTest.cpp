#include "Xml/File.h"

#include "Xml/NodeList.h"
#include "Xml/Utf8.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

namespace orv::xml {
namespace {

std::string saved(const File& file, LineEnding lineEnding = LineEnding::Lf) {
    std::ostringstream stream;
    EXPECT_TRUE(file.save(stream, nullptr, Encoding::Utf8, lineEnding));
    return stream.str();
}

std::optional<Element> parsed(File& file, const std::string& text, errorhandler::ParseInterface* handler = nullptr) {
    std::istringstream stream(text);
    return file.parse(stream, "sample", handler);
}

/// What a parser makes of a node below the root that was given a name and a text.
std::pair<std::string, std::optional<std::string>> throughParser(const std::string& name, const std::string& text) {
    File made;
    made.create("Root", {}, true)->ElementNodeAppend(name).boTextNodeAppend(text);
    File read;
    const auto root = parsed(read, saved(made, LineEnding::None));
    if (!root || !root->FirstChildGet()) {
        return {"no document: " + saved(made), {}};
    }
    const auto child = *root->FirstChildGet();
    return {child.getNodeName(),
            child.FirstChildGet() ? std::optional(child.FirstChildGet()->getNodeValue()) : std::nullopt};
}

TEST(XmlFile, bringsBackEveryTextAndNameByteForByte) {
    std::vector<std::string> samples = {
        // clang-format off
        "", " ", "\t \n", "\r", "\r\n", "a\rb\nc\r\n", "a]]>b <&>\"'", "<!--", "_", "_x", "_x_", "__x_", "_x005F_",
        "_x0041_", "_x0041", "_x0041\x01", "_x004\x01_", "_x005F_x0041_", "_X0041_", "_xdc80_", "_xD83D_",
        "_xD83D__xDE00_", "\xF0\x9F\x98\x80", "\x80", "\xC3", "\xC3(", "\xED\xA0\x80", "\xF5\x80\x80\x80",
        "\xF0\x8F\xBF\xBF", "\xC0\x80", "\xE0\x9F\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xEF\xBB\xBFx",
        "\x7f\xC2\x85", "1st", "-a", "a b", "a:b", "xmlns", "L\xC3\xA4nge",
        "\xD0\x94\xD0\xBB\xD0\xB8\xD0\xBD\xD0\xB0", std::string("a\0b", 3),
        // clang-format on
    };
    for (unsigned byte = 0; byte < 256; ++byte) {
        samples.emplace_back(1, static_cast<char>(byte));
        samples.push_back("\xE2\x82" + std::string(1, static_cast<char>(byte)));
    }
    for (const std::string& sample : samples) {
        const auto [name, text] = throughParser(sample, sample);
        EXPECT_EQ(name, sample);
        EXPECT_EQ(text, sample);
    }
}

TEST(XmlFile, bringsBackEveryUnicodeCharacterInTextsAndNames) {
    constexpr char32_t count = 1024; // at a time
    for (char32_t begin = 0; begin < 0x110000; begin += count) {
        const bool areSurrogates = begin >= 0xd800 && begin < 0xe000;
        std::string text;
        for (char32_t codePoint = begin; !areSurrogates && codePoint < begin + count; ++codePoint) {
            appendUtf8(text, codePoint);
        }
        const auto [name, value] = throughParser(text, text);
        ASSERT_EQ(name, text) << std::hex << static_cast<std::uint32_t>(begin);
        ASSERT_EQ(value, text) << std::hex << static_cast<std::uint32_t>(begin);
    }
}

TEST(XmlFile, spellsNamesAndTextsForReadersOfAllKinds) {
    const std::array<std::string, 3> cases[] = {
        {"\xCE\x94\xCE\xBB-1", "\xCE\x94", "<\xCE\x94\xCE\xBB-1>\xCE\x94</\xCE\x94\xCE\xBB-1>"},
        {"\xD0\x94\xD0\xBB", "\xD0\x94", "<\xD0\x94\xD0\xBB>\xD0\x94</\xD0\x94\xD0\xBB>"},
        {"1 t:", "1 t:", "<_x0031__x0020_t_x003A_>1 t:</_x0031__x0020_t_x003A_>"},
        {"t", "\xC2\x85\xE2\x80\xA8\xE2\x80\xA9\r\n\t>", "<t>&#x85;&#x2028;\xE2\x80\xA9&#13;\n\t&gt;</t>"},
    };
    for (const auto& [name, text, expected] : cases) {
        File file;
        file.create(name, {}, false)->boTextNodeAppend(text);
        EXPECT_EQ(saved(file, LineEnding::None), expected);
    }
}

TEST(XmlFile, tellsApartNamesThatBeginAndEndAlike) {
    std::string document = "<r>";
    for (const std::string name :
         {"Resolved", "ResolvedBy", "ResolvedOn", "Resolved", "Resolute", "ResolutelyEd", "ResolvedlyEd", "Resol",
          "Revol", "Re", "Ra", "LengthOfTheOuterWall", "LengthOfAnOuterWalls"}) {
        document += "<a/><" + name + "/>"; // each name is taken to follow "a" as the one before did
    }
    document += "</r>";
    File file;
    ASSERT_TRUE(parsed(file, document));
    EXPECT_EQ(saved(file, LineEnding::None).substr(38), document);
}

TEST(XmlFile, isSavedIndentedExceptAroundText) {
    File file;
    auto root = file.create("Root", {}, true);
    auto first = root->ElementNodeAppend("First");
    root->ElementNodeAppend("Empty");
    first.ElementNodeAppend("Text").boTextNodeAppend("a < b");
    first.ElementNodeAppend("Nothing").boTextNodeAppend("");
    auto mixed = root->ElementNodeAppend("Mixed");
    EXPECT_TRUE(mixed.boTextNodeAppend("_x00"));
    first.ElementNodeAppend("Behind").boTextNodeAppend("behind");
    EXPECT_TRUE(mixed.boTextNodeAppend("41_"));
    EXPECT_FALSE(mixed.ChildNodesGet().getFirstItem()->boTextNodeAppend("no"));
    mixed.ElementNodeAppend("Inner").ElementNodeAppend("Innermost");
    EXPECT_EQ(saved(file), R"(<?xml version="1.0" encoding="UTF-8"?>
<Root>
  <First>
    <Text>a &lt; b</Text>
    <Nothing><![CDATA[]]></Nothing>
    <Behind>behind</Behind>
  </First>
  <Empty/>
  <Mixed>_x005F_x0041_<Inner>
      <Innermost/>
    </Inner></Mixed>
</Root>
)");
    File bare;
    bare.create("a", "1.0", false)->ElementNodeAppend("b").ElementNodeAppend("c");
    EXPECT_EQ(saved(bare, LineEnding::None), "<a><b><c/></b></a>");
    EXPECT_EQ(saved(bare, LineEnding::CrLf), "<a>\r\n  <b>\r\n    <c/>\r\n  </b>\r\n</a>\r\n");
}

TEST(XmlFile, hasTheNodesOfAllKindsInDocumentOrder) {
    File file;
    const auto root = parsed(
        file, "<!-- before --><r a='1' b='&lt;&#10;&quot;'>x<![CDATA[<y>]]>&amp;z<e/><!-- c --><?pi data?> </r>\n");
    ASSERT_TRUE(root);
    EXPECT_TRUE(root->boNodeNameIs("r"));
    EXPECT_EQ(root->getNodeValue(), "");
    EXPECT_FALSE(root->NextSiblingGet());
    std::vector<std::pair<std::string, std::string>> nodes;
    for (auto node = root->ChildNodesGet().getFirstItem(); node; node = node->NextSiblingGet()) {
        nodes.emplace_back(node->getNodeName(), node->getNodeValue());
        EXPECT_EQ(const_Element::toWrapper(*node).has_value(), node->boNodeNameIs("e"));
        EXPECT_FALSE(node->FirstChildGet());
    }
    const decltype(nodes) expected = {
        {"#text", "x<y>&z"}, {"e", ""}, {"#comment", " c "}, {"pi", "data"}, {"#text", " "}};
    EXPECT_EQ(nodes, expected);
    EXPECT_EQ(saved(file, LineEnding::None).substr(38),
              R"(<!-- before --><r a="1" b="&lt;&#10;&quot;">x&lt;y&gt;&amp;z<e/><!-- c --><?pi data?> </r>)");
}

class ReasonKeeper : public errorhandler::ParseInterface,
                     public errorhandler::ExceptionInterface,
                     public errorhandler::WriteInterface {
public:
    void report(std::string_view message) override { reasons.emplace_back(message); }
    std::vector<std::string> reasons;
};

std::string nestedEntities(int count, const std::string& reference) {
    std::string text = "<!DOCTYPE r [<!ENTITY e0 'x'>";
    for (int number = 1; number <= count; ++number) {
        text += "<!ENTITY e" + std::to_string(number) + " '";
        for (const char each : reference) {
            text += std::string("&e") + std::to_string(number - 1) + ";" + (each == '.' ? "" : " ");
        }
        text += "'>";
    }
    return text + "]><r>&e" + std::to_string(count) + ";</r>";
}

TEST(XmlFile, hasNoValueForWhatIsNoWellFormedDocument) {
    const std::string refused[] = {
        // clang-format off
        "", " \n", "x", "<r>", "<r></r", "<r></s>", "<r/><r/>", "<r/>x", "<r>&nbsp;</r>", "<r>\x01</r>",
        "<r>\xff</r>", "<r a=1/>", "<r a='1' a='2'/>", "<r><!-- -- --></r>", "<r>]]></r>",
        " <?xml version='1.0'?><r/>", std::string("<r>\0</r>", 8), std::string("\xff\xfe<\0r", 5),
        nestedEntities(20, ".........."), nestedEntities(100'000, "."), "<!DOCTYPE r SYSTEM 'x'><r>&undeclared;</r>", "<!DOCTYPE r SYSTEM 'x'><r a='&undeclared;'/>",
        "<!DOCTYPE r [<!ENTITY e SYSTEM 'x'>]><r>&e;</r>",
        "<?xml version='1.0' encoding='ISO-8859-1'?><r><?p\xAA d?></r>", "<?xml version='1.0' encoding='ISO-8859-1'?><r \xB5=''/>",
        // clang-format on
    };
    for (const std::string& text : refused) {
        File file;
        ReasonKeeper keeper;
        EXPECT_FALSE(parsed(file, text, &keeper)) << text.substr(0, 100);
        EXPECT_EQ(keeper.reasons.size(), 1U) << text.substr(0, 100);
        EXPECT_TRUE(parsed(file, "<r/>"));
    }
}

TEST(XmlFile, readsTheEncodingsOfXmlAndBoundedEntities) {
    const std::string documents[] = {"<r>\xC3\xA4</r>",
                                     "\xEF\xBB\xBF<r>\xC3\xA4</r>",
                                     "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE4</r>",
                                     std::string("\xFF\xFE<\0r\0>\0\xE4\0<\0/\0r\0>\0", 18),
                                     std::string("\xFE\xFF\0<\0r\0>\0\xE4\0<\0/\0r\0>", 18),
                                     "<!DOCTYPE r [<!ENTITY a '&#228;'>]><r>&a;</r>"};
    for (const std::string& document : documents) {
        File file;
        const auto root = parsed(file, document);
        ASSERT_TRUE(root) << document;
        EXPECT_EQ(root->FirstChildGet()->getNodeValue(), "\xC3\xA4");
    }
}

TEST(XmlFile, parsesWalksAndSavesTwoHundredThousandLevels) {
    std::string text;
    constexpr int depth = 200'000;
    for (int level = 0; level < depth; ++level) {
        text += "<a>";
    }
    for (int level = 0; level < depth; ++level) {
        text += "</a>";
    }
    File file;
    std::optional<const_Node> node = parsed(file, text);
    int levels = 0;
    for (; node; node = node->FirstChildGet()) {
        ++levels;
    }
    EXPECT_EQ(levels, depth);
    File again;
    EXPECT_TRUE(parsed(again, saved(file, LineEnding::Lf)));
}

TEST(XmlFile, readsMarkupThatIsLongerThanItsBuffers) {
    const std::string filling(3'000'000, 'x');
    File file;
    const auto root = parsed(file, "<r a='" + filling + "'><!--" + filling + "-->" + filling + "</r>");
    ASSERT_TRUE(root);
    EXPECT_EQ(root->FirstChildGet()->getNodeValue(), filling);
    EXPECT_EQ(root->FirstChildGet()->NextSiblingGet()->getNodeValue(), filling);
}

TEST(XmlFile, holdsOneDocumentAndTellsWhyItRefuses) {
    ReasonKeeper keeper;
    File file(&keeper, VerboseLevel::Full, ValidateLevel::WellFormed);
    std::ostringstream failing;
    failing.setstate(std::ios_base::badbit);
    EXPECT_FALSE(file.save(failing, &keeper, Encoding::Utf8, LineEnding::Lf));
    EXPECT_FALSE(file.create("r", "1.1", true));
    EXPECT_FALSE(parsed(file, "<r>\n<s></r>", &keeper));
    auto root = file.create("r", {}, true);
    EXPECT_FALSE(file.create("s", {}, true));
    EXPECT_FALSE(parsed(file, "<s/>"));
    EXPECT_TRUE(root->boNodeNameIs("r"));
    EXPECT_FALSE(file.save(failing, &keeper, Encoding::Utf8, LineEnding::Lf));
    const std::vector<std::string> expected = {
        "there is no document to save", "only XML 1.0 is known",       "sample, line 2, column 6: mismatched tag",
        "there is a document already",  "there is a document already", "the stream can't be written"};
    EXPECT_EQ(keeper.reasons, expected);
}

TEST(XmlFile, spellsNumbersAndTruthValues) {
    EXPECT_EQ(const_Node::to_string(-9'223'372'036'854'775'807LL - 1), "-9223372036854775808");
    EXPECT_EQ(const_Node::to_string(true) + const_Node::to_string(false), "truefalse");
}

} // namespace
} // namespace orv::xml

#include "Xml/MarkupWriter.h"

#include <gtest/gtest.h>

namespace orv::xml {
namespace {

TEST(XmlMarkupWriter, mixesMarkupWithElementsAndTellsWhereTheyStand) {
    MarkupWriter writer(LineEnding::Lf);
    writer.startElement("r");
    writer.appendMarkup("<!--1-->");
    const std::size_t begin = writer.getSize();
    writer.startElement("e", " a=\"1\"");
    writer.appendElement("A", "a");
    writer.appendMarkup("<B b = '2'>\n</B>");
    writer.appendMarkup("");
    writer.appendElement("C", "c");
    writer.endElement();
    const std::size_t end = writer.getSize();
    writer.startElement("f", " a=\"1\"");
    writer.endElement();
    writer.endElement();
    EXPECT_EQ(writer.getText().substr(begin, end - begin), R"(
  <e a="1">
    <A>a</A>
    <B b = '2'>
</B>
    <C>c</C>
  </e>)");
    EXPECT_EQ(writer.getText().substr(0, begin), "<r>\n  <!--1-->");
    EXPECT_EQ(writer.getText().substr(end), "\n  <f a=\"1\"/>\n</r>\n");
}

} // namespace
} // namespace orv::xml

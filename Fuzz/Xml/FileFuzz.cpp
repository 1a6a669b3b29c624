// Whatever is taken for a document can be saved; what was saved is a document of the same content, and saved again the
// same bytes. Its outline shows all that it holds, and its elements have the parts that a File of each has.

#include "Xml/Documents.h"
#include "Xml/ElementReader.h"
#include "Xml/Outline.h"

using namespace orv;

namespace {

std::optional<xml::Element> parse(xml::File& file, std::string_view text) {
    std::istringstream stream{std::string(text)};
    return file.parse(stream, "input", nullptr);
}

void requireSame(const xml::ElementParts& parts, const xml::const_Node& element) {
    fuzz::require(parts.name == element.getNodeName(), "an element has its name");
    auto expected = parts.children.begin();
    for (auto node = element.FirstChildGet(); node; node = node->NextSiblingGet()) {
        if (!xml::const_Element::toWrapper(*node)) {
            continue;
        }
        fuzz::require(expected != parts.children.end() && expected->name == node->getNodeName(), "no child is missed");
        const auto first = node->FirstChildGet();
        fuzz::require(expected->text == (first ? std::optional(first->getNodeValue()) : std::nullopt),
                      "a child's text is its first node's value");
        fuzz::require(!expected->isPlain || !first || (first->boNodeNameIs("#text") && !first->NextSiblingGet()),
                      "a plain child has a text alone");
        xml::File file;
        const auto again = parse(file, expected->markup);
        fuzz::require(again && again->getNodeName() == expected->name, "a child's markup is an element");
        ++expected;
    }
    fuzz::require(expected == parts.children.end(), "no child is made up");
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::string input(data, data + size);
    xml::File file;
    const auto root = parse(file, input);
    if (root) {
        fuzz::requireComesBack(file, *root);
    }
    const auto outline = xml::Outline::parse(input);
    if (!outline) {
        return 0;
    }
    fuzz::require(root && outline->getRootName() == root->getNodeName(), "what has an outline is a document");
    fuzz::require(outline->getSource() == input, "the source is what was given");
    xml::File content;
    const auto again = parse(content, "<r>" + std::string(outline->getContent()) + "</r>");
    fuzz::require(again.has_value(), "the content of a root is that of another");
    xml::ElementReader reader;
    auto element = again->FirstChildGet();
    for (std::size_t number = 0; number < outline->size(); ++number) {
        while (element && !xml::const_Element::toWrapper(*element)) {
            element = element->NextSiblingGet();
        }
        const auto parts = reader.read((*outline)[number].element);
        fuzz::require(element && parts, "an element can be taken apart");
        requireSame(*parts, *element);
        element = element->NextSiblingGet();
    }
    return 0;
}

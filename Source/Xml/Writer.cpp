#include "Xml/Writer.h"

#include <string>
#include <vector>

namespace orv::xml {

namespace {

/// Writes a node up to its children and tells whether it has any.
bool begin(const Document& document, NodeIndex node, MarkupWriter& out) {
    switch (document.getKind(node)) {
    case NodeKind::Element:
        out.startElement(document.getName(node).text,
                         node == 0 ? document.surroundings.rootAttributes : std::string_view(), document.hasText(node));
        if (document.getFirstChild(node) != noNode) {
            return true;
        }
        out.endElement();
        return false;
    case NodeKind::Text:
        out.appendText(document.getText(node));
        return false;
    case NodeKind::Comment:
        out.appendMarkup("<!--" + std::string(document.getText(node)) + "-->");
        return false;
    case NodeKind::ProcessingInstruction:
        out.appendMarkup("<?" + document.getName(node).text + " " + std::string(document.getText(node)) + "?>");
        return false;
    }
    return false;
}

} // namespace

void writeDocument(const Document& document, MarkupWriter& out) {
    if (document.hasDeclaration()) {
        out.appendDeclaration();
    }
    out.appendOutside(document.surroundings.before);
    std::vector<NodeIndex> openElements;
    NodeIndex node = 0;
    while (node != noNode) {
        if (begin(document, node, out)) {
            openElements.push_back(node);
            node = document.getFirstChild(node);
            continue;
        }
        while (!openElements.empty() && document.getNextSibling(node) == noNode) {
            node = openElements.back();
            openElements.pop_back();
            out.endElement();
        }
        node = document.getNextSibling(node);
    }
    out.appendOutside(document.surroundings.after);
}

} // namespace orv::xml

#include "Xml/Document.h"
#include "Xml/MarkupWriter.h"

#include <string>
#include <vector>

namespace orv::xml {

/// Writes a node up to its children, and returns whether it has any.
bool Document::begin(NodeIndex node, MarkupWriter& out) const {
    switch (getKind(node)) {
    case NodeKind::Element:
        out.startElement(getName(node), node == 0 ? surroundings.rootAttributes : std::string_view(),
                         nodes[node].hasText != 0);
        if (getFirstChild(node) != noNode) {
            return true;
        }
        out.endElement();
        return false;
    case NodeKind::Text:
        out.appendText(getText(node));
        return false;
    case NodeKind::Comment:
        out.appendMarkup("<!--" + std::string(getText(node)) + "-->");
        return false;
    case NodeKind::ProcessingInstruction:
        out.appendMarkup("<?" + getName(node) + " " + std::string(getText(node)) + "?>");
        return false;
    }
    return false;
}

void Document::write(MarkupWriter& out) const {
    if (declaration) {
        out.appendDeclaration();
    }
    out.appendOutside(surroundings.before);
    std::vector<NodeIndex> openElements;
    NodeIndex node = 0;
    while (node != noNode) {
        if (begin(node, out)) {
            openElements.push_back(node);
            node = getFirstChild(node);
            continue;
        }
        while (!openElements.empty() && getNextSibling(node) == noNode) {
            node = openElements.back();
            openElements.pop_back();
            out.endElement();
        }
        node = getNextSibling(node);
    }
    out.appendOutside(surroundings.after);
}

} // namespace orv::xml

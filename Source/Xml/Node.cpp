#include "Xml/Node.h"

#include "Xml/Document.h"
#include "Xml/Element.h"
#include "Xml/NodeList.h"

#include <stdexcept>

namespace orv::xml {

std::string const_Node::getNodeName() const {
    switch (document->getKind(index)) {
    case NodeKind::Text:
        return "#text";
    case NodeKind::Comment:
        return "#comment";
    default:
        return document->getName(index);
    }
}

std::string const_Node::getNodeValue() const {
    if (document->getKind(index) == NodeKind::Element) {
        return {};
    }
    return std::string(document->getText(index));
}

bool const_Node::boNodeNameIs(const std::string& name) const {
    return getNodeName() == name;
}

const_NodeList const_Node::ChildNodesGet() const {
    return const_NodeList(FirstChildGet());
}

std::optional<const_Node> const_Node::FirstChildGet() const {
    return at(document->getFirstChild(index));
}

std::optional<const_Node> const_Node::NextSiblingGet() const {
    return at(document->getNextSibling(index));
}

std::string const_Node::to_string(long long value) {
    return std::to_string(value);
}

std::string const_Node::to_string(bool value) {
    return value ? "true" : "false";
}

std::optional<const_Node> const_Node::at(std::uint32_t node) const {
    return node == noNode ? std::nullopt : std::optional(const_Node(*document, node));
}

NodeList Node::ChildNodesGet() {
    return NodeList(at(document->getFirstChild(index)));
}

std::optional<Node> Node::NextSiblingGet() {
    return at(document->getNextSibling(index));
}

Element Node::ElementNodeAppend(std::string_view name) {
    if (document->getKind(index) != NodeKind::Element) {
        throw std::logic_error("only an element has children");
    }
    return {*document, document->appendElement(index, name)};
}

bool Node::boTextNodeAppend(std::string_view text) {
    if (document->getKind(index) != NodeKind::Element) {
        return false;
    }
    document->appendText(index, text);
    return true;
}

std::optional<Node> Node::at(std::uint32_t node) const {
    return node == noNode ? std::nullopt : std::optional(Node(*document, node));
}

std::optional<const_Element> const_Element::toWrapper(const const_Node& node) {
    const const_Element element(node);
    return element.document->getKind(element.index) == NodeKind::Element ? std::optional(element) : std::nullopt;
}

} // namespace orv::xml

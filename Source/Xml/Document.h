#pragma once

#include "Xml/Names.h"
#include "Xml/Surroundings.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace orv::xml {

using NodeIndex = std::uint32_t;

/// Where a node has no sibling, child or parent.
constexpr NodeIndex noNode = 0xffffffff;

enum class NodeKind : std::uint8_t { Element, Text, Comment, ProcessingInstruction };

/// The nodes of a document: sixteen bytes a node, all texts in one buffer, each name once. A
/// node's index never changes; the root is node 0.
class Document {
public:
    /// An empty document, to be saved with the XML declaration or without.
    explicit Document(bool withDeclaration) : declaration(withDeclaration) {}
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Appends to the children of the parent, which is an element, or makes the root if the parent is noNode.
    NodeIndex appendElement(NodeIndex parent, std::string_view name);

    /// Appends a text, or goes on with the one that the parent's children end with, and gives the text node.
    NodeIndex appendText(NodeIndex parent, std::string_view text);

    NodeIndex appendComment(NodeIndex parent, std::string_view text);
    NodeIndex appendProcessingInstruction(NodeIndex parent, std::string_view target, std::string_view data);

    /// Replaces the escapes in the text that was appended last by what they stand for.
    void unescapeLastText(NodeIndex text);

    NodeKind getKind(NodeIndex node) const { return static_cast<NodeKind>(nodes[node].kind); }
    NodeIndex getNextSibling(NodeIndex node) const { return nodes[node].nextSibling; }

    /// noNode for what isn't an element.
    NodeIndex getFirstChild(NodeIndex node) const {
        return getKind(node) == NodeKind::Element ? nodes[node].first : noNode;
    }

    /// Whether there is a text among the element's children.
    bool hasText(NodeIndex element) const { return nodes[element].hasText != 0; }

    /// The name of an element or a processing instruction.
    const Names::Name& getName(NodeIndex node) const { return names[nodes[node].name]; }

    /// The text of what isn't an element.
    std::string_view getText(NodeIndex node) const {
        return std::string_view(texts).substr(nodes[node].first, nodes[node].last);
    }

    bool hasDeclaration() const { return declaration; }

    /// A measure of what the document takes when it is saved.
    std::size_t getTextSize() const { return texts.size(); }
    std::size_t getNodeCount() const { return nodes.size(); }

    /// What stands around the root's content.
    Surroundings surroundings;

private:
    static constexpr unsigned kindBits = 2;
    static constexpr unsigned nameBits = Names::numberBits;

    struct NodeData {
        std::uint32_t kind : kindBits;
        std::uint32_t hasText : 1;
        std::uint32_t name : nameBits;
        NodeIndex nextSibling;
        std::uint32_t first; // an element's first child, otherwise where the text begins
        std::uint32_t last;  // an element's last child, otherwise the length of the text
    };

    NodeIndex append(NodeIndex parent, NodeKind kind, std::uint32_t name, std::uint32_t first, std::uint32_t last);
    NodeIndex appendWithText(NodeIndex parent, NodeKind kind, std::uint32_t name, std::string_view text);
    std::uint32_t storeText(std::string_view text);

    bool declaration;
    std::deque<NodeData> nodes; // which has no room to spare
    std::string texts;
    Names names;
};

} // namespace orv::xml

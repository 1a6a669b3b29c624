#pragma once

#include "Xml/Names.h"
#include "Xml/Surroundings.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace orv::xml {

class MarkupWriter;
struct ParseFailure;

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

    /// What the stream holds from its position on, or null, with the reason, if that isn't a document.
    static std::unique_ptr<Document> parse(std::istream& stream, ParseFailure& failure);

    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Appends to the children of the parent, which is an element, or makes the root if the parent is noNode.
    NodeIndex appendElement(NodeIndex parent, std::string_view name);

    /// Appends a text, or goes on with the one that the parent's children end with, and returns the text node.
    NodeIndex appendText(NodeIndex parent, std::string_view text);

    NodeIndex appendComment(NodeIndex parent, std::string_view text);
    NodeIndex appendProcessingInstruction(NodeIndex parent, std::string_view target, std::string_view data);

    NodeKind getKind(NodeIndex node) const { return static_cast<NodeKind>(nodes[node].kind); }
    NodeIndex getNextSibling(NodeIndex node) const { return nodes[node].nextSibling; }

    /// noNode for what isn't an element.
    NodeIndex getFirstChild(NodeIndex node) const {
        return getKind(node) == NodeKind::Element ? nodes[node].first : noNode;
    }

    /// The name of an element or a processing instruction.
    const std::string& getName(NodeIndex node) const { return names[nodes[node].name]; }

    /// The text of what isn't an element.
    std::string_view getText(NodeIndex node) const {
        return std::string_view(texts).substr(nodes[node].first, nodes[node].last);
    }

    /// Writes the whole document, which must have a root.
    void write(MarkupWriter& out) const;

    /// About what a document that is written takes, in bytes.
    std::size_t estimateSize() const;

private:
    class Builder;

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
    void unescapeLastText(NodeIndex text);
    bool begin(NodeIndex node, MarkupWriter& out) const;

    bool declaration;
    Surroundings surroundings;  // of the root's content
    std::deque<NodeData> nodes; // a vector would keep up to half of its memory unused
    std::string texts;
    Names names;
};

} // namespace orv::xml

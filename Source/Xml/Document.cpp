#include "Xml/Document.h"

#include "Xml/Escape.h"

#include <limits>
#include <stdexcept>

namespace orv::xml {

namespace {

/// The size as it is stored. Throws std::length_error if it has reached the maximum.
std::uint32_t checkedSize(std::size_t size, std::size_t maximum) {
    if (size >= maximum) {
        throw std::length_error("XML document too long");
    }
    return static_cast<std::uint32_t>(size);
}

} // namespace

NodeIndex Document::appendElement(NodeIndex parent, std::string_view name) {
    return append(parent, NodeKind::Element, names.numberOf(name), noNode, noNode);
}

NodeIndex Document::appendText(NodeIndex parent, std::string_view text) {
    const NodeIndex last = nodes[parent].last;
    if (last == noNode || getKind(last) != NodeKind::Text) {
        const NodeIndex node = appendWithText(parent, NodeKind::Text, 0, text);
        nodes[parent].hasText = 1;
        return node;
    }
    NodeData& node = nodes[last];
    if (node.first + node.last != texts.size()) {
        // Something else was stored since: the text moves behind it, so that it can grow.
        node.first = storeText(std::string(getText(last)));
    }
    storeText(text);
    node.last += static_cast<std::uint32_t>(text.size());
    return last;
}

NodeIndex Document::appendComment(NodeIndex parent, std::string_view text) {
    return appendWithText(parent, NodeKind::Comment, 0, text);
}

NodeIndex Document::appendProcessingInstruction(NodeIndex parent, std::string_view target, std::string_view data) {
    return appendWithText(parent, NodeKind::ProcessingInstruction, names.numberOf(target), data);
}

std::size_t Document::estimateSize() const {
    constexpr std::size_t typicalMarkup = 16; // of a node with a short name
    return texts.size() + typicalMarkup * nodes.size();
}

/// Replaces the escapes in the text that was appended last by what they stand for.
void Document::unescapeLastText(NodeIndex text) {
    NodeData& node = nodes[text];
    unescape(texts, node.first);
    node.last = static_cast<std::uint32_t>(texts.size() - node.first);
}

NodeIndex Document::append(NodeIndex parent, NodeKind kind, std::uint32_t name, std::uint32_t first,
                           std::uint32_t last) {
    const NodeIndex node = checkedSize(nodes.size(), noNode);
    NodeData data{};
    data.kind = static_cast<std::uint32_t>(kind) % (1U << kindBits);
    data.name = name % (1U << nameBits);
    data.nextSibling = noNode;
    data.first = first;
    data.last = last;
    nodes.push_back(data);
    if (parent != noNode) {
        NodeData& element = nodes[parent];
        if (element.last == noNode) {
            element.first = node;
        } else {
            nodes[element.last].nextSibling = node;
        }
        element.last = node;
    }
    return node;
}

NodeIndex Document::appendWithText(NodeIndex parent, NodeKind kind, std::uint32_t name, std::string_view text) {
    const std::uint32_t first = storeText(text);
    return append(parent, kind, name, first, static_cast<std::uint32_t>(text.size()));
}

std::uint32_t Document::storeText(std::string_view text) {
    const std::size_t first = texts.size();
    checkedSize(first + text.size(), std::numeric_limits<std::uint32_t>::max());
    texts += text;
    return static_cast<std::uint32_t>(first);
}

} // namespace orv::xml

#pragma once

#include "OrvExport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orv::xml {

class const_NodeList;
class Document;
class Element;
class NodeList;

/// A node of a document for reading: an element, a text, a comment or a processing instruction. A small handle to
/// be passed by value; it stays valid for as long as the File that it came from.
class ORV_XML_EXPORT const_Node {
public:
    /// An element's name, a processing instruction's target, "#text" or "#comment".
    std::string getNodeName() const;

    /// The text of a text, a comment or a processing instruction; empty for an element.
    std::string getNodeValue() const;

    /// Whether getNodeName is name.
    bool boNodeNameIs(const std::string& name) const;

    /// The child nodes of all kinds, in document order; none for any node but an element.
    const_NodeList ChildNodesGet() const;

    /// The first child node of any kind, or no value if there is none.
    std::optional<const_Node> FirstChildGet() const;

    /// The node after this one under the same parent, or no value if this is the last one.
    std::optional<const_Node> NextSiblingGet() const;

    /// The value in decimal digits.
    static std::string to_string(long long value);

    /// "true" or "false".
    static std::string to_string(bool value);

protected:
    const_Node(Document& owner, std::uint32_t position) : document(&owner), index(position) {}

    Document* document;
    std::uint32_t index;

private:
    std::optional<const_Node> at(std::uint32_t node) const;
};

/// A node of a document for reading and appending.
class ORV_XML_EXPORT Node : public const_Node {
public:
    using const_Node::ChildNodesGet;
    using const_Node::NextSiblingGet;

    /// The child nodes, as those of const_Node, to append to.
    NodeList ChildNodesGet();

    /// The node after this one, as that of const_Node, to append to.
    std::optional<Node> NextSiblingGet();

    /// Appends a child element after the existing children and returns it. Any name will do; it comes back as it is.
    /// Throws std::logic_error if this isn't an element.
    Element ElementNodeAppend(std::string_view name);

    /// Appends a text, of any bytes, after the existing children; after a text it goes on with that one.
    /// Returns false, and does nothing, if this isn't an element.
    bool boTextNodeAppend(std::string_view text);

protected:
    Node(Document& owner, std::uint32_t position) : const_Node(owner, position) {}

private:
    std::optional<Node> at(std::uint32_t node) const;
};

} // namespace orv::xml

#pragma once

#include "Xml/Node.h"

namespace orv::xml {

/// The children of a node, for reading: getFirstItem, and from there const_Node::NextSiblingGet.
class ORV_XML_EXPORT const_NodeList {
public:
    /// The first node, or no value if the list is empty.
    std::optional<const_Node> getFirstItem() const { return firstItem; }

private:
    friend class const_Node;

    explicit const_NodeList(std::optional<const_Node> first) : firstItem(first) {}

    std::optional<const_Node> firstItem;
};

/// The children of a node, for reading and appending: getFirstItem, and from there Node::NextSiblingGet.
class ORV_XML_EXPORT NodeList {
public:
    /// The first node, or no value if the list is empty.
    std::optional<Node> getFirstItem() const { return firstItem; }

private:
    friend class Node;

    explicit NodeList(std::optional<Node> first) : firstItem(first) {}

    std::optional<Node> firstItem;
};

} // namespace orv::xml

#pragma once

#include "Xml/Node.h"

namespace orv::xml {

/// A node that is known to be an element, for reading.
class ORV_XML_EXPORT const_Element : public const_Node {
public:
    /// The node as an element, or no value if it is none.
    static std::optional<const_Element> toWrapper(const const_Node& node);

private:
    explicit const_Element(const const_Node& node) : const_Node(node) {}
};

/// A node that is known to be an element, for reading and appending.
class ORV_XML_EXPORT Element : public Node {
    friend class File;
    friend class Node;

    Element(Document& owner, std::uint32_t position) : Node(owner, position) {}
};

} // namespace orv::xml

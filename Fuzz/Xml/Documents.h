#pragma once

#include "Require.h"
#include "Xml/File.h"
#include "Xml/NodeList.h"

#include <sstream>
#include <string>

namespace orv::fuzz {

inline std::string saved(const xml::File& file, xml::LineEnding lineEnding) {
    std::ostringstream stream;
    require(file.save(stream, nullptr, xml::Encoding::Utf8, lineEnding), "a document can be saved");
    return stream.str();
}

/// The node's children and their children, each with its name and value.
inline std::string contentOf(const xml::const_Node& node) {
    std::string content;
    for (auto child = node.ChildNodesGet().getFirstItem(); child; child = child->NextSiblingGet()) {
        const bool isElement = xml::const_Element::toWrapper(*child).has_value();
        content += (isElement ? '<' : '"') + child->getNodeName() + '\0' + child->getNodeValue() + '\0';
        content += contentOf(*child) + '>';
    }
    return content;
}

} // namespace orv::fuzz

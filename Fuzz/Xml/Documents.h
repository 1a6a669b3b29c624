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
inline std::string contentOf(const xml::const_Node& node) { // NOLINT(misc-no-recursion): inputs are short
    std::string content;
    for (auto child = node.ChildNodesGet().getFirstItem(); child; child = child->NextSiblingGet()) {
        const bool isElement = xml::const_Element::toWrapper(*child).has_value();
        content += (isElement ? '<' : '"') + child->getNodeName() + '\0' + child->getNodeValue() + '\0';
        content += contentOf(*child) + '>';
    }
    return content;
}

/// What is saved of the file is a document with the same root and content, and saved again the same bytes.
inline void requireComesBack(const xml::File& file, const xml::const_Node& root) {
    for (const auto lineEnding : {xml::LineEnding::None, xml::LineEnding::Lf, xml::LineEnding::CrLf}) {
        const std::string text = saved(file, lineEnding);
        std::istringstream stream(text);
        xml::File copy;
        const auto copiedRoot = copy.parse(stream, "copy", nullptr);
        require(copiedRoot.has_value(), "a saved document is one");
        require(copiedRoot->getNodeName() == root.getNodeName(), "the root's name comes back");
        require(lineEnding != xml::LineEnding::None || contentOf(*copiedRoot) == contentOf(root),
                "the content comes back");
        require(lineEnding == xml::LineEnding::CrLf || saved(copy, lineEnding) == text,
                "a document saved twice gives the same bytes");
    }
}

} // namespace orv::fuzz

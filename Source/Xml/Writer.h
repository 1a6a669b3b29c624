#pragma once

#include "Xml/Document.h"

#include <string>
#include <string_view>
#include <vector>

namespace orv::xml {

/// Makes the text of a document.
class Writer {
public:
    /// lineEnd stands between the elements of an element that has no text; an empty one means no indentation either.
    Writer(const Document& source, std::string_view lineEnd) : document(source), lineBreak(lineEnd) {}

    /// The whole document. Called once.
    std::string write();

private:
    bool begin(NodeIndex node);
    void end(NodeIndex element);
    void breakLine(NodeIndex parent);
    void appendLine(std::string_view text);

    const Document& document;
    std::string_view lineBreak;
    std::vector<NodeIndex> openElements;
    std::string out;
};

} // namespace orv::xml

#pragma once

#include "Xml/Parser.h"

#include <string_view>

namespace orv::xml {

/// Reads documents node by node. What stands outside the root goes to the surroundings.
class NodeParser : public Parser {
protected:
    /// A piece of a text node, with its escapes. The next piece belongs to the same node unless something else was
    /// called in between. An empty CDATA section is an empty piece.
    virtual void appendText(std::string_view piece) = 0;

    virtual void appendComment(std::string_view text) = 0;
    virtual void appendProcessingInstruction(std::string_view target, std::string_view data) = 0;

private:
    void setHandlers() final;
};

} // namespace orv::xml

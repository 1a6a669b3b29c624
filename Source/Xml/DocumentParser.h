#pragma once

#include "Xml/Document.h"
#include "Xml/Parser.h"

#include <memory>
#include <string_view>
#include <vector>

namespace orv::xml {

/// Makes a document of what it reads.
class DocumentParser : public Parser {
public:
    DocumentParser();

    /// The document, once it has been parsed.
    std::unique_ptr<Document> takeDocument();

private:
    void beginElement(const char* name, const char** attributes) override;
    void endElement(const char* name) override;
    void appendText(std::string_view text);
    void endText();

    std::unique_ptr<Document> document = std::make_unique<Document>(true);
    std::vector<NodeIndex> openElements;
    NodeIndex openText = noNode;
};

} // namespace orv::xml

#include "Xml/Document.h"
#include "Xml/NodeParser.h"
#include "Xml/Spelling.h"

#include <utility>
#include <vector>

namespace orv::xml {

class Document::Builder : public NodeParser {
public:
    std::unique_ptr<Document> takeDocument() {
        document->surroundings = std::move(surroundings);
        return std::move(document);
    }

private:
    void beginElement(const char* name, const char** /*attributes*/) override {
        endText();
        const NodeIndex parent = openElements.empty() ? noNode : openElements.back();
        openElements.push_back(document->appendElement(parent, unescapedName(name)));
    }

    void endElement(const char* /*name*/) override {
        endText();
        openElements.pop_back();
    }

    void appendText(std::string_view piece) override { openText = document->appendText(openElements.back(), piece); }

    void appendComment(std::string_view text) override {
        endText();
        document->appendComment(openElements.back(), text);
    }

    void appendProcessingInstruction(std::string_view target, std::string_view data) override {
        endText();
        document->appendProcessingInstruction(openElements.back(), target, data);
    }

    void endText() {
        if (openText != noNode) {
            document->unescapeLastText(openText);
            openText = noNode;
        }
    }

    std::unique_ptr<Document> document = std::make_unique<Document>(true);
    std::vector<NodeIndex> openElements;
    NodeIndex openText = noNode;
};

std::unique_ptr<Document> Document::parse(std::istream& stream, ParseFailure& failure) {
    Builder builder;
    if (builder.parse(stream)) {
        return builder.takeDocument();
    }
    failure = builder.getFailure();
    return nullptr;
}

} // namespace orv::xml

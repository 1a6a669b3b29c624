#include "Xml/DocumentParser.h"

#include "Xml/Escape.h"

#include <expat.h>

#include <utility>

namespace orv::xml {

DocumentParser::DocumentParser() {
    XML_SetCharacterDataHandler(getExpat(), [](void* self, const XML_Char* data, int length) {
        handle<DocumentParser>(self, [=](DocumentParser& parser) {
            parser.appendText({data, static_cast<std::size_t>(length)});
        });
    });
    // An empty section is an empty text.
    XML_SetStartCdataSectionHandler(getExpat(), [](void* self) {
        handle<DocumentParser>(self, [](DocumentParser& parser) { parser.appendText({}); });
    });
    XML_SetCommentHandler(getExpat(), [](void* self, const XML_Char* text) {
        handle<DocumentParser>(self, [text](DocumentParser& parser) {
            if (parser.getDepth() > 0) {
                parser.endText();
                parser.document->appendComment(parser.openElements.back(), text);
            } else {
                parser.handOn();
            }
        });
    });
    XML_SetProcessingInstructionHandler(getExpat(), [](void* self, const XML_Char* target, const XML_Char* data) {
        handle<DocumentParser>(self, [=](DocumentParser& parser) {
            if (parser.getDepth() > 0) {
                parser.endText();
                parser.checkName(target);
                parser.document->appendProcessingInstruction(parser.openElements.back(), target, data);
            } else {
                parser.handOn();
            }
        });
    });
}

std::unique_ptr<Document> DocumentParser::takeDocument() {
    document->surroundings = std::move(surroundings);
    return std::move(document);
}

void DocumentParser::beginElement(const char* name, const char** /*attributes*/) {
    endText();
    const NodeIndex parent = openElements.empty() ? noNode : openElements.back();
    openElements.push_back(document->appendElement(parent, unescapedName(name)));
}

void DocumentParser::endElement(const char* /*name*/) {
    endText();
    openElements.pop_back();
}

void DocumentParser::appendText(std::string_view text) {
    openText = document->appendText(openElements.back(), text);
}

void DocumentParser::endText() {
    if (openText != noNode) {
        document->unescapeLastText(openText);
        openText = noNode;
    }
}

} // namespace orv::xml

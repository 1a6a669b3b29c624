#include "Xml/NodeParser.h"

#include <expat.h>

namespace orv::xml {

void NodeParser::setHandlers() {
    XML_SetCharacterDataHandler(getExpat(), [](void* self, const XML_Char* data, int length) {
        handle<NodeParser>(self, [=](NodeParser& parser) {
            parser.appendText({data, static_cast<std::size_t>(length)});
        });
    });
    XML_SetStartCdataSectionHandler(
        getExpat(), [](void* self) { handle<NodeParser>(self, [](NodeParser& parser) { parser.appendText({}); }); });
    XML_SetCommentHandler(getExpat(), [](void* self, const XML_Char* text) {
        handle<NodeParser>(self, [text](NodeParser& parser) {
            if (parser.getDepth() > 0) {
                parser.appendComment(text);
            } else {
                parser.handOn();
            }
        });
    });
    XML_SetProcessingInstructionHandler(getExpat(), [](void* self, const XML_Char* target, const XML_Char* data) {
        handle<NodeParser>(self, [=](NodeParser& parser) {
            if (parser.getDepth() > 0) {
                parser.checkName(target);
                parser.appendProcessingInstruction(target, data);
            } else {
                parser.handOn();
            }
        });
    });
}

} // namespace orv::xml

#include "Xml/Parser.h"

#include "Xml/Escape.h"

#include <expat.h>

#include <algorithm>
#include <istream>
#include <new>
#include <stdexcept>

namespace orv::xml {

namespace {

// Expat expands entities within entities by recursion; this bounds its stack.
constexpr int maximumEntities = 256;

// Expat looks at an unfinished comment, tag or reference anew with every buffer, so buffers grow.
constexpr int firstBufferSize = 1 << 16;
constexpr int lastBufferSize = 1 << 29;

} // namespace

void Parser::Release::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

Parser::Parser() : expat(XML_ParserCreate(nullptr)) {
    if (!expat) {
        throw std::bad_alloc();
    }
    XML_SetUserData(expat.get(), this);
    setHandlers();
}

std::unique_ptr<Document> Parser::parse(std::istream& stream) {
    document = std::make_unique<Document>(true);
    if (!readAll(stream)) {
        document.reset();
    }
    if (exception) {
        std::rethrow_exception(exception);
    }
    return std::move(document);
}

bool Parser::readAll(std::istream& stream) {
    bool isLast = false;
    for (int bufferSize = firstBufferSize; !isLast; bufferSize = std::min(2 * bufferSize, lastBufferSize)) {
        void* const buffer = XML_GetBuffer(expat.get(), bufferSize);
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        stream.read(static_cast<char*>(buffer), bufferSize);
        isLast = !stream;
        if (stream.bad()) {
            noteFailure("the stream can't be read");
            return false;
        }
        if (XML_ParseBuffer(expat.get(), static_cast<int>(stream.gcount()), isLast ? 1 : 0) != XML_STATUS_OK) {
            if (!isStopped) {
                noteFailure(XML_ErrorString(XML_GetErrorCode(expat.get())));
            }
            return false;
        }
    }
    return true;
}

template <typename Action>
void Parser::handle(void* self, Action action) {
    auto& parser = *static_cast<Parser*>(self);
    if (parser.isStopped) {
        return; // Expat still ends an empty element whose start it was stopped at.
    }
    try {
        action(parser);
    } catch (const std::length_error&) {
        parser.stop("the document is too long");
    } catch (...) {
        parser.exception = std::current_exception();
        parser.stop("an exception passed");
    }
}

void Parser::setHandlers() {
    XML_SetElementHandler(
        expat.get(),
        [](void* self, const XML_Char* name, const XML_Char**) {
            handle(self, [name](Parser& parser) {
                parser.endText();
                const NodeIndex parent = parser.openElements.empty() ? noNode : parser.openElements.back();
                parser.openElements.push_back(parser.document->appendElement(parent, unescapedName(name)));
            });
        },
        [](void* self, const XML_Char*) {
            handle(self, [](Parser& parser) {
                parser.endText();
                parser.openElements.pop_back();
            });
        });
    XML_SetCharacterDataHandler(expat.get(), [](void* self, const XML_Char* data, int length) {
        handle(self, [=](Parser& parser) {
            const std::string_view text(data, static_cast<std::size_t>(length));
            parser.openText = parser.document->appendText(parser.openElements.back(), text);
        });
    });
    XML_SetStartCdataSectionHandler(expat.get(), [](void* self) {
        handle(self,
               [](Parser& parser) { parser.openText = parser.document->appendText(parser.openElements.back(), {}); });
    });
    XML_SetCommentHandler(expat.get(), [](void* self, const XML_Char* text) {
        handle(self, [text](Parser& parser) {
            if (!parser.openElements.empty()) {
                parser.endText();
                parser.document->appendComment(parser.openElements.back(), text);
            }
        });
    });
    XML_SetProcessingInstructionHandler(expat.get(), [](void* self, const XML_Char* target, const XML_Char* data) {
        handle(self, [=](Parser& parser) {
            if (!parser.openElements.empty()) {
                parser.endText();
                parser.document->appendProcessingInstruction(parser.openElements.back(), target, data);
            }
        });
    });
    XML_SetEntityDeclHandler(expat.get(), [](void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                             const XML_Char*, const XML_Char*, const XML_Char*) {
        handle(self, [](Parser& parser) {
            if (++parser.declaredEntities > maximumEntities) {
                parser.stop("too many entities are declared");
            }
        });
    });
    XML_SetSkippedEntityHandler(expat.get(), [](void* self, const XML_Char*, int) {
        handle(self, [](Parser& parser) { parser.stop("an entity isn't declared"); });
    });
}

void Parser::stop(const char* reason) {
    isStopped = true;
    noteFailure(reason);
    XML_StopParser(expat.get(), XML_FALSE);
}

void Parser::noteFailure(const char* reason) {
    failure = {reason, XML_GetCurrentLineNumber(expat.get()), XML_GetCurrentColumnNumber(expat.get()) + 1};
}

void Parser::endText() {
    if (openText != noNode) {
        document->unescapeLastText(openText);
        openText = noNode;
    }
}

} // namespace orv::xml

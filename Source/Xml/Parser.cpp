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

// Expat looks at an unfinished comment, tag or reference anew with every buffer, so buffers grow with those.
constexpr int firstBufferSize = 1 << 16;
constexpr int lastBufferSize = 1 << 29;

void appendAttributeValue(std::string& out, std::string_view value) {
    for (const char character : value) {
        switch (character) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\t':
        case '\n':
        case '\r':
            out += "&#" + std::to_string(character) + ";";
            break;
        default:
            out += character;
        }
    }
}

/// The attributes of a tag, each with a blank ahead of it, from names and values that alternate up to a null.
std::string markupOf(const XML_Char** attributes) {
    std::string markup;
    for (; attributes[0] != nullptr; attributes += 2) {
        markup.append(" ").append(attributes[0]).append("=\"");
        appendAttributeValue(markup, attributes[1]);
        markup += '"';
    }
    return markup;
}

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
    if (document) {
        for (std::string* const outside : {&document->surroundings.before, &document->surroundings.after}) {
            *outside = std::string(trimmed(*outside));
        }
    }
    return std::move(document);
}

bool Parser::readAll(std::istream& stream) {
    bool isLast = false;
    int bufferSize = firstBufferSize;
    for (XML_Index fed = 0; !isLast;) {
        if (fed - XML_GetCurrentByteIndex(expat.get()) > bufferSize / 2) {
            bufferSize = std::min(2 * bufferSize, lastBufferSize);
        }
        void* const buffer = XML_GetBuffer(expat.get(), bufferSize);
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        stream.read(static_cast<char*>(buffer), bufferSize);
        isLast = !stream;
        fed += stream.gcount();
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
        [](void* self, const XML_Char* name, const XML_Char** attributes) {
            handle(self, [=](Parser& parser) { parser.beginElement(name, attributes); });
        },
        [](void* self, const XML_Char* name) { handle(self, [=](Parser& parser) { parser.endElement(name); }); });
    XML_SetCharacterDataHandler(expat.get(), [](void* self, const XML_Char* data, int length) {
        handle(self, [=](Parser& parser) { parser.appendText({data, static_cast<std::size_t>(length)}); });
    });
    XML_SetStartCdataSectionHandler(expat.get(),
                                    [](void* self) { handle(self, [](Parser& parser) { parser.appendText({}); }); });
    XML_SetCommentHandler(expat.get(), [](void* self, const XML_Char* text) {
        handle(self, [text](Parser& parser) {
            if (!parser.openElements.empty()) {
                parser.endText();
                parser.beginNode(parser.document->appendComment(parser.openElements.back(), text));
            }
            XML_DefaultCurrent(parser.expat.get());
        });
    });
    XML_SetProcessingInstructionHandler(expat.get(), [](void* self, const XML_Char* target, const XML_Char* data) {
        handle(self, [=](Parser& parser) {
            if (!parser.openElements.empty()) {
                parser.endText();
                parser.beginNode(
                    parser.document->appendProcessingInstruction(parser.openElements.back(), target, data));
            }
            XML_DefaultCurrent(parser.expat.get());
        });
    });
    // What the others don't handle or hand on: markup as it stands, but in UTF-8.
    XML_SetDefaultHandlerExpand(expat.get(), [](void* self, const XML_Char* markup, int length) {
        handle(self, [=](Parser& parser) { parser.keepMarkup({markup, static_cast<std::size_t>(length)}); });
    });
    // A document that is saved gets an XML declaration of its own.
    XML_SetXmlDeclHandler(expat.get(), [](void*, const XML_Char*, const XML_Char*, int) {});
    XML_SetDoctypeDeclHandler(
        expat.get(),
        [](void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
            handle(self, [](Parser& parser) { parser.hasDoctype = parser.isInDoctype = true; });
        },
        [](void* self) { handle(self, [](Parser& parser) { parser.isInDoctype = false; }); });
    XML_SetEntityDeclHandler(expat.get(), [](void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                             const XML_Char*, const XML_Char*, const XML_Char*) {
        handle(self, [](Parser& parser) {
            if (++parser.declaredEntities > maximumEntities) {
                parser.stop("too many entities are declared");
            }
        });
    });
    // What isn't read can't be carried on, and might be missed: files outside the document and what they declare.
    XML_SetExternalEntityRefHandler(
        expat.get(), [](XML_Parser source, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
            handle(XML_GetUserData(source), [](Parser& parser) { parser.stop("an entity is in another file"); });
            return static_cast<int>(XML_STATUS_ERROR);
        });
    XML_SetNotStandaloneHandler(expat.get(), [](void* self) {
        handle(self, [](Parser& parser) { parser.stop("declarations are in another file"); });
        return static_cast<int>(XML_STATUS_ERROR);
    });
    XML_SetSkippedEntityHandler(expat.get(), [](void* self, const XML_Char*, int) {
        handle(self, [](Parser& parser) { parser.stop("an entity isn't declared"); });
    });
}

void Parser::beginElement(const char* name, const char** attributes) {
    endText();
    if (openElements.empty()) {
        openElements.push_back(document->appendElement(noNode, unescapedName(name)));
        document->surroundings.rootAttributes = markupOf(attributes);
        return;
    }
    const NodeIndex element = document->appendElement(openElements.back(), unescapedName(name));
    beginNode(element);
    openElements.push_back(element);
    if (hasDoctype) {
        // The tag may name entities, and lack attributes, that are declared there.
        document->appendSource('<' + std::string(name) + markupOf(attributes) + '>');
    } else {
        XML_DefaultCurrent(expat.get());
    }
}

void Parser::endElement(const char* name) {
    endText();
    openElements.pop_back();
    if (openElements.empty()) {
        return;
    }
    if (hasDoctype) {
        document->appendSource("</" + std::string(name) + ">");
    } else {
        XML_DefaultCurrent(expat.get());
    }
}

void Parser::appendText(std::string_view text) {
    openText = document->appendText(openElements.back(), text);
    beginNode(openText);
    XML_DefaultCurrent(expat.get());
}

/// Notes where the markup of a child of the root begins.
void Parser::beginNode(NodeIndex node) {
    if (openElements.size() == 1) {
        document->beginSource(node);
    }
}

void Parser::keepMarkup(std::string_view markup) {
    if (!openElements.empty()) {
        document->appendSource(markup);
    } else if (!isInDoctype) {
        const bool isBehind = document->getNodeCount() != 0;
        (isBehind ? document->surroundings.after : document->surroundings.before) += markup;
    }
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

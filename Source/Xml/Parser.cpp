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
constexpr int lastBufferSize = 1 << 29; // Expat takes lengths as int

/// Expat takes more characters in names when a document isn't in UTF-8; the same names in UTF-8 would be no XML.
constexpr const char* foreignName = "a name has a character that UTF-8 documents can't have in names";

void appendEscaped(std::string& out, std::string_view text, std::string_view specials) {
    for (const char character : text) {
        if (specials.find(character) == std::string_view::npos) {
            out += character;
            continue;
        }
        switch (character) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += "&#" + std::to_string(character) + ";";
        }
    }
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
    refuseOtherFiles();
}

Parser::~Parser() = default;

bool Parser::parse(std::istream& stream) {
    const bool isParsed = readAll(stream);
    if (exception) {
        std::rethrow_exception(exception);
    }
    if (!isParsed) {
        return false;
    }
    auto& [before, attributes, after] = surroundings;
    before = std::string(trimmed(before));
    after = std::string(trimmed(after));
    if (!accepts({before, "<r", attributes, "/>", after})) {
        noteFailure(foreignName);
        return false;
    }
    return true;
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

void Parser::setHandlers() {
    XML_SetElementHandler(
        expat.get(),
        [](void* self, const XML_Char* name, const XML_Char** attributes) {
            handle<Parser>(self, [=](Parser& parser) {
                if (++parser.depth == 1) {
                    parser.hasRoot = true;
                    parser.surroundings.rootAttributes = markupOf(attributes);
                }
                parser.beginElement(name, attributes);
            });
        },
        [](void* self, const XML_Char* name) {
            handle<Parser>(self, [name](Parser& parser) {
                parser.endElement(name);
                --parser.depth;
            });
        });
    // What has no handler or is handed on.
    XML_SetDefaultHandlerExpand(expat.get(), [](void* self, const XML_Char* markup, int length) {
        handle<Parser>(self, [=](Parser& parser) { parser.keepMarkup({markup, static_cast<std::size_t>(length)}); });
    });
    // A document that is saved gets an XML declaration of its own.
    XML_SetXmlDeclHandler(expat.get(), [](void*, const XML_Char*, const XML_Char*, int) {});
    XML_SetDoctypeDeclHandler(
        expat.get(),
        [](void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
            handle<Parser>(self, [](Parser& parser) { parser.doctype = parser.isInDoctype = true; });
        },
        [](void* self) { handle<Parser>(self, [](Parser& parser) { parser.isInDoctype = false; }); });
    XML_SetEntityDeclHandler(expat.get(), [](void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                             const XML_Char*, const XML_Char*, const XML_Char*) {
        handle<Parser>(self, [](Parser& parser) {
            if (++parser.declaredEntities > maximumEntities) {
                parser.stop("too many entities are declared");
            }
        });
    });
}

/// What isn't read can't be carried on, and might be missed: files outside the document and what they declare.
void Parser::refuseOtherFiles() {
    XML_SetExternalEntityRefHandler(expat.get(), [](XML_Parser source, const XML_Char*, const XML_Char*,
                                                    const XML_Char*, const XML_Char*) {
        handle<Parser>(XML_GetUserData(source), [](Parser& parser) { parser.stop("an entity is in another file"); });
        return static_cast<int>(XML_STATUS_ERROR);
    });
    XML_SetNotStandaloneHandler(expat.get(), [](void* self) {
        handle<Parser>(self, [](Parser& parser) { parser.stop("declarations are in another file"); });
        return static_cast<int>(XML_STATUS_ERROR);
    });
    XML_SetSkippedEntityHandler(expat.get(), [](void* self, const XML_Char*, int) {
        handle<Parser>(self, [](Parser& parser) { parser.stop("an entity isn't declared"); });
    });
}

std::string Parser::markupOf(const char** attributes) {
    std::string markup;
    for (; attributes[0] != nullptr; attributes += 2) {
        markup.append(" ").append(attributes[0]).append("=\"");
        appendEscaped(markup, attributes[1], "&<\"\t\n\r");
        markup += '"';
    }
    return markup;
}

std::string Parser::markupOf(std::string_view text) {
    std::string markup;
    appendEscaped(markup, text, "&<>\r");
    return markup;
}

bool Parser::accepts(std::initializer_list<std::string_view> document) {
    const std::unique_ptr<XML_ParserStruct, Release> checker(XML_ParserCreate("UTF-8"));
    if (!checker) {
        throw std::bad_alloc();
    }
    for (std::string_view piece : document) {
        while (!piece.empty()) {
            const std::string_view block = piece.substr(0, lastBufferSize);
            if (XML_Parse(checker.get(), block.data(), static_cast<int>(block.size()), 0) != XML_STATUS_OK) {
                return false;
            }
            piece.remove_prefix(block.size());
        }
    }
    return XML_Parse(checker.get(), nullptr, 0, 1) == XML_STATUS_OK;
}

void Parser::handOn() {
    XML_DefaultCurrent(expat.get());
}

void Parser::keepMarkup(std::string_view markup) {
    if (depth > 0) {
        appendMarkup(markup);
    } else if (!isInDoctype) {
        (hasRoot ? surroundings.after : surroundings.before) += markup;
    }
}

void Parser::checkName(std::string_view name) {
    const bool isAscii = std::all_of(name.begin(), name.end(), [](char byte) { return byte >= 0; });
    if (!isAscii && !accepts({"<", name, "/>"})) {
        stop(foreignName);
    }
}

void Parser::stop(const char* reason) {
    isStopped = true;
    noteFailure(reason);
    XML_StopParser(expat.get(), XML_FALSE);
}

void Parser::stopForException() {
    try {
        throw;
    } catch (const std::length_error&) {
        stop("the document is too long");
    } catch (...) {
        exception = std::current_exception();
        stop("an exception passed"); // which parse throws again
    }
}

void Parser::noteFailure(const char* reason) {
    failure = {reason, XML_GetCurrentLineNumber(expat.get()), XML_GetCurrentColumnNumber(expat.get()) + 1};
}

} // namespace orv::xml

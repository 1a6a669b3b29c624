#include "Xml/Parser.h"

#include "Xml/Spelling.h"
#include "Xml/WellFormed.h"

#include <expat.h>

#include <algorithm>
#include <istream>
#include <new>
#include <optional>
#include <random>
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

/// Whether a document that begins so is in UTF-16: with its byte order mark, or a first character of two bytes.
bool isUtf16(std::string_view beginning) {
    const std::string_view first = beginning.substr(0, 2);
    return first == "\xFE\xFF" || first == "\xFF\xFE" || first.find('\0') != std::string_view::npos;
}

bool isUtf8Name(std::string_view encoding) {
    return encoding == "UTF-8" || encoding == "utf-8";
}

} // namespace

void Parser::Release::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

Parser::Parser() : expat(XML_ParserCreate(nullptr)), hashSalt(std::random_device()()) {
    if (!expat) {
        throw std::bad_alloc();
    }
}

Parser::~Parser() = default;

bool Parser::parse(std::istream& stream) {
    return parseWith([&stream](char* to, std::size_t size) -> std::optional<std::size_t> {
        stream.read(to, static_cast<std::streamsize>(size));
        return stream.bad() ? std::nullopt : std::optional(static_cast<std::size_t>(stream.gcount()));
    });
}

bool Parser::parse(std::string_view document) {
    return parseWith([&document](char* to, std::size_t size) {
        const std::size_t count = document.copy(to, size);
        document.remove_prefix(count);
        return std::optional(count);
    });
}

/// Parses the document that read delivers in blocks: read(to, size) writes up to size bytes and returns how many, fewer
/// than size only at the end of the document, or nothing if it couldn't read.
template <typename Read>
bool Parser::parseWith(Read read) {
    restart();
    const bool isParsed = readAll(read);
    if (state.exception) {
        std::rethrow_exception(state.exception);
    }
    if (!isParsed) {
        return false;
    }
    auto& [before, attributes, after] = surroundings;
    before = std::string(trimmed(before));
    after = std::string(trimmed(after));
    if (!isUtf8() && !isWellFormed({before, "<r", attributes, "/>", after})) {
        noteFailure(foreignName);
        return false;
    }
    return true;
}

template <typename Read>
bool Parser::readAll(Read read) {
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
        const std::optional<std::size_t> size = read(static_cast<char*>(buffer), static_cast<std::size_t>(bufferSize));
        if (!size) {
            noteFailure("the stream can't be read");
            return false;
        }
        if (fed == 0 && isUtf16({static_cast<const char*>(buffer), *size})) {
            state.isUtf8 = false;
        }
        const int length = static_cast<int>(*size);
        isLast = length < bufferSize;
        fed += length;
        if (XML_ParseBuffer(expat.get(), length, isLast ? 1 : 0) != XML_STATUS_OK) {
            if (!state.isStopped) {
                noteFailure(XML_ErrorString(XML_GetErrorCode(expat.get())));
            }
            return false;
        }
    }
    return true;
}

void Parser::restart() {
    XML_ParserReset(expat.get(), nullptr);
    XML_SetHashSalt(expat.get(), hashSalt);
    state = {};
    surroundings = {};
    XML_SetUserData(expat.get(), this);
    setOwnHandlers();
    refuseOtherFiles();
    setHandlers();
}

void Parser::setOwnHandlers() {
    XML_SetElementHandler(
        expat.get(),
        [](void* self, const XML_Char* name, const XML_Char** attributes) {
            handle<Parser>(self, [=](Parser& parser) {
                if (++parser.state.depth == 1) {
                    parser.state.hasRoot = true;
                    parser.surroundings.rootAttributes = attributeMarkup(attributes);
                }
                parser.beginElement(name, attributes);
            });
        },
        [](void* self, const XML_Char* name) {
            handle<Parser>(self, [name](Parser& parser) {
                parser.endElement(name);
                --parser.state.depth;
            });
        });
    setHandsOn(true);
    // The declaration itself goes: a document that is saved gets one of its own.
    XML_SetXmlDeclHandler(expat.get(), [](void* self, const XML_Char*, const XML_Char* encoding, int) {
        handle<Parser>(self, [encoding](Parser& parser) {
            parser.state.isUtf8 = parser.state.isUtf8 && (encoding == nullptr || isUtf8Name(encoding));
        });
    });
    XML_SetDoctypeDeclHandler(
        expat.get(),
        [](void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
            handle<Parser>(self, [](Parser& parser) { parser.state.doctype = parser.state.isInDoctype = true; });
        },
        [](void* self) { handle<Parser>(self, [](Parser& parser) { parser.state.isInDoctype = false; }); });
    XML_SetEntityDeclHandler(expat.get(), [](void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                             const XML_Char*, const XML_Char*, const XML_Char*) {
        handle<Parser>(self, [](Parser& parser) {
            if (++parser.state.declaredEntities > maximumEntities) {
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

void Parser::handOn() {
    XML_DefaultCurrent(expat.get());
}

void Parser::setHandsOn(bool handsOn) {
    const XML_DefaultHandler keep = [](void* self, const XML_Char* markup, int length) {
        handle<Parser>(self, [=](Parser& parser) { parser.keepMarkup({markup, static_cast<std::size_t>(length)}); });
    };
    XML_SetDefaultHandlerExpand(expat.get(), handsOn ? keep : nullptr);
}

std::uint64_t Parser::getTagBegin() const {
    return static_cast<std::uint64_t>(XML_GetCurrentByteIndex(expat.get()));
}

std::uint64_t Parser::getTagEnd() const {
    return getTagBegin() + static_cast<std::uint64_t>(XML_GetCurrentByteCount(expat.get()));
}

void Parser::keepMarkup(std::string_view markup) {
    if (state.depth > 0) {
        appendMarkup(markup);
    } else if (!state.isInDoctype) {
        (state.hasRoot ? surroundings.after : surroundings.before) += markup;
    }
}

void Parser::checkName(std::string_view name) {
    const bool isAscii = std::all_of(name.begin(), name.end(), [](char byte) { return byte >= 0; });
    if (!isUtf8() && !isAscii && !isWellFormed({"<", name, "/>"})) {
        stop(foreignName);
    }
}

void Parser::stop(const char* reason) {
    state.isStopped = true;
    noteFailure(reason);
    XML_StopParser(expat.get(), XML_FALSE);
}

void Parser::stopForException() {
    try {
        throw;
    } catch (const std::length_error&) {
        stop("the document is too long");
    } catch (...) {
        state.exception = std::current_exception();
        stop("an exception passed"); // which parse throws again
    }
}

void Parser::noteFailure(const char* reason) {
    state.failure = {reason, XML_GetCurrentLineNumber(expat.get()), XML_GetCurrentColumnNumber(expat.get()) + 1};
}

} // namespace orv::xml

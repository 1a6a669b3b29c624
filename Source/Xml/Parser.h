#pragma once

#include "Xml/Document.h"

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <memory>
#include <string_view>
#include <vector>

struct XML_ParserStruct;

namespace orv::xml {

/// Reads one document from a stream; made anew for each.
class Parser {
public:
    Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// The document, or null if the stream holds none; then getFailure tells why.
    std::unique_ptr<Document> parse(std::istream& stream);

    struct Failure {
        const char* reason = "";  ///< Lives as long as the process.
        std::uint64_t line = 0;   ///< From 1.
        std::uint64_t column = 0; ///< From 1, in bytes.
    };

    const Failure& getFailure() const { return failure; }

private:
    struct Release {
        void operator()(XML_ParserStruct* parser) const;
    };

    /// Runs what a handler does; no exception may pass through the C code that called it.
    template <typename Action>
    static void handle(void* self, Action action);

    void setHandlers();
    void beginElement(const char* name, const char** attributes);
    void endElement(const char* name);
    void appendText(std::string_view text);
    void beginNode(NodeIndex node);
    void keepMarkup(std::string_view markup);
    bool readAll(std::istream& stream);
    void stop(const char* reason);
    void noteFailure(const char* reason);
    void endText();

    std::unique_ptr<XML_ParserStruct, Release> expat;
    std::unique_ptr<Document> document;
    std::vector<NodeIndex> openElements;
    NodeIndex openText = noNode;
    int declaredEntities = 0;
    bool hasDoctype = false;
    bool isInDoctype = false;
    bool isStopped = false;
    Failure failure;
    std::exception_ptr exception;
};

} // namespace orv::xml

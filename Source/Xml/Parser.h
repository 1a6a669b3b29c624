#pragma once

#include "Xml/Surroundings.h"

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace orv::xml {

/// Reads one document from a stream; made anew for each. What becomes of it is up to the derived class.
class Parser {
public:
    virtual ~Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// Whether the stream holds a document; if not, getFailure tells why.
    bool parse(std::istream& stream);

    struct Failure {
        const char* reason = "";  ///< Lives as long as the process.
        std::uint64_t line = 0;   ///< From 1.
        std::uint64_t column = 0; ///< From 1, in bytes.
    };

    const Failure& getFailure() const { return failure; }

    /// Whether the pieces, in UTF-8, are a well-formed document together.
    static bool accepts(std::initializer_list<std::string_view> document);

protected:
    Parser();

    /// Runs what a handler of Expat does; no exception may pass through the C code that called it.
    template <typename Derived, typename Action>
    static void handle(void* self, Action action) {
        Parser& parser = *static_cast<Parser*>(self);
        if (!parser.isStopped) { // Expat still ends an empty element whose start it was stopped at.
            try {
                action(static_cast<Derived&>(parser));
            } catch (...) {
                parser.stopForException();
            }
        }
    }

    /// The tags of the root and below it. The attributes are names and values that alternate up to a null.
    virtual void beginElement(const char* name, const char** attributes) = 0;
    virtual void endElement(const char* name) = 0;

    /// Markup below the root, in UTF-8 and otherwise as it stands, that isn't handled or was handed on.
    virtual void appendMarkup(std::string_view /*markup*/) {}

    /// Stops the parser if the name, which comes out as it is, would be none in UTF-8.
    void checkName(std::string_view name);

    /// Hands the markup that is being handled on to appendMarkup or, outside the root, to the surroundings.
    void handOn();

    /// The attributes of a tag, each with a blank ahead of it.
    static std::string markupOf(const char** attributes);

    /// Character data that reads the same wherever it is put.
    static std::string markupOf(std::string_view text);

    XML_ParserStruct* getExpat() const { return expat.get(); }

    /// The number of open elements, with the one whose tag is being handled.
    std::uint64_t getDepth() const { return depth; }
    bool hasDoctype() const { return doctype; }

    /// Complete once the document is parsed.
    Surroundings surroundings;

private:
    struct Release {
        void operator()(XML_ParserStruct* parser) const;
    };

    void setHandlers();
    void refuseOtherFiles();
    void keepMarkup(std::string_view markup);
    bool readAll(std::istream& stream);
    void stop(const char* reason);
    void stopForException();
    void noteFailure(const char* reason);

    std::unique_ptr<XML_ParserStruct, Release> expat;
    std::uint64_t depth = 0;
    int declaredEntities = 0;
    bool hasRoot = false;
    bool doctype = false;
    bool isInDoctype = false;
    bool isStopped = false;
    Failure failure;
    std::exception_ptr exception;
};

} // namespace orv::xml

#pragma once

#include "Xml/ParseFailure.h"
#include "Xml/Surroundings.h"

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace orv::xml {

/// Reads documents, one after another. What becomes of one is up to the derived class.
class Parser {
public:
    virtual ~Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// Reads one document, and returns whether it is one; if not, getFailure tells why. What a handler throws comes
    /// through.
    bool parse(std::istream& stream);
    bool parse(std::string_view document);

    const ParseFailure& getFailure() const { return state.failure; }

protected:
    Parser();

    /// Runs what a handler of Expat does; no exception may pass through the C code that called it.
    template <typename Derived, typename Action>
    static void handle(void* self, Action action) {
        Parser& parser = *static_cast<Parser*>(self);
        if (!parser.state.isStopped) { // Expat still ends an empty element whose start it was stopped at.
            try {
                action(static_cast<Derived&>(parser));
            } catch (...) {
                parser.stopForException();
            }
        }
    }

    /// Called ahead of each document, for handlers of Expat that the derived class sets.
    virtual void setHandlers() {}

    /// Called for every start tag and every end tag. The attributes are names and values that alternate up to a null.
    virtual void beginElement(const char* name, const char** attributes) = 0;
    virtual void endElement(const char* name) = 0;

    /// Called with markup inside the root that no handler took, or that handOn() passed on: as in the document, recoded
    /// to UTF-8.
    virtual void appendMarkup(std::string_view /*markup*/) {}

    /// Stops the parser if the name, which comes out as it is, is no XML name in UTF-8.
    void checkName(std::string_view name);

    /// Passes the markup that is being handled on to appendMarkup or, outside the root, to the surroundings.
    void handOn();

    /// Whether markup that no handler takes is passed on. It is, until this is called.
    void setHandsOn(bool handsOn);

    XML_ParserStruct* getExpat() const { return expat.get(); }

    /// Where the tag that is being handled begins and ends, in bytes of the document. The end of an empty element is a
    /// tag of no bytes.
    std::uint64_t getTagBegin() const;
    std::uint64_t getTagEnd() const;

    /// The number of open elements, with the one whose tag is being handled.
    std::uint64_t getDepth() const { return state.depth; }
    bool hasDoctype() const { return state.doctype; }

    /// Whether the document's bytes are UTF-8, as far as is known ahead of the root. False for US-ASCII as well.
    bool isUtf8() const { return state.isUtf8; }

    /// Complete once the document is parsed.
    Surroundings surroundings;

private:
    struct Release {
        void operator()(XML_ParserStruct* parser) const;
    };

    /// What is known of the document so far.
    struct State {
        std::uint64_t depth = 0;
        int declaredEntities = 0;
        bool hasRoot = false;
        bool doctype = false;
        bool isInDoctype = false;
        bool isUtf8 = true;
        bool isStopped = false;
        ParseFailure failure;
        std::exception_ptr exception;
    };

    template <typename Read>
    bool parseWith(Read read);
    template <typename Read>
    bool readAll(Read read);
    void restart();
    void setOwnHandlers();
    void refuseOtherFiles();
    void keepMarkup(std::string_view markup);
    void stop(const char* reason);
    void stopForException();
    void noteFailure(const char* reason);

    std::unique_ptr<XML_ParserStruct, Release> expat;
    unsigned long hashSalt; // Expat would ask the system for one with each document
    State state;
};

} // namespace orv::xml

#include "Xml/ElementEvents.h"

#include "Xml/NodeParser.h"

#include <expat.h>

namespace orv::xml {

namespace {

class EventParser : public NodeParser {
public:
    explicit EventParser(ElementEvents& receiver) : events(receiver) {}

private:
    void beginElement(const char* name, const char** attributes) override {
        ElementEvents::Attributes list;
        for (; attributes[0] != nullptr; attributes += 2) {
            list.emplace_back(attributes[0], attributes[1]);
        }
        text.clear();
        events.beginElement(name, list, XML_GetCurrentLineNumber(getExpat()));
    }

    void endElement(const char* /*name*/) override {
        events.endElement(text);
        text.clear();
    }

    void appendText(std::string_view piece) override { text += piece; }
    void appendComment(std::string_view /*text*/) override {}
    void appendProcessingInstruction(std::string_view /*target*/, std::string_view /*data*/) override {}

    ElementEvents& events;
    std::string text;
};

} // namespace

std::optional<ParseFailure> readElements(std::istream& stream, ElementEvents& events) {
    EventParser parser(events);
    return parser.parse(stream) ? std::nullopt : std::optional(parser.getFailure());
}

} // namespace orv::xml

#include "Xml/ChildEvents.h"

#include "Xml/FirstNode.h"
#include "Xml/NodeParser.h"
#include "Xml/Spelling.h"

namespace orv::xml {

namespace {

class ChildParser : public NodeParser {
public:
    explicit ChildParser(ChildEvents& receiver) : events(receiver) {}

private:
    static constexpr std::uint64_t rootDepth = 1;
    static constexpr std::uint64_t childDepth = 2;
    static constexpr std::uint64_t fieldDepth = 3;

    void beginElement(const char* name, const char** /*attributes*/) override {
        if (getDepth() == rootDepth) {
            isOfInterest = events.takeRoot(unescapedName(name));
        }
        if (!isOfInterest) {
            return;
        }
        switch (getDepth()) {
        case childDepth:
            childName = unescapedName(name);
            fields.clear();
            break;
        case fieldDepth:
            fieldName = unescapedName(name);
            break;
        default:
            appendOther(getDepth() - 1, {});
        }
    }

    void endElement(const char* /*name*/) override {
        if (!isOfInterest) {
            return;
        }
        if (getDepth() == fieldDepth) {
            if (auto value = firstNode.end()) {
                fields.emplace_back(std::move(fieldName), *std::move(value));
            }
        } else if (getDepth() == childDepth) {
            events.takeChild(childName, fields);
        }
    }

    void appendText(std::string_view piece) override {
        if (getDepth() == fieldDepth && isOfInterest) {
            firstNode.appendText(piece);
        }
    }

    void appendComment(std::string_view text) override { appendOther(getDepth(), text); }

    void appendProcessingInstruction(std::string_view /*target*/, std::string_view data) override {
        appendOther(getDepth(), data);
    }

    void appendOther(std::uint64_t parentDepth, std::string_view value) {
        if (parentDepth == fieldDepth && isOfInterest) {
            firstNode.appendOther(value);
        }
    }

    ChildEvents& events;
    bool isOfInterest = true;
    std::string childName;
    ChildEvents::Fields fields;
    std::string fieldName;
    FirstNode firstNode;
};

} // namespace

std::optional<ParseFailure> readChildren(std::string_view document, ChildEvents& events) {
    ChildParser parser(events);
    return parser.parse(document) ? std::nullopt : std::optional(parser.getFailure());
}

} // namespace orv::xml

#include "Xml/RecordEvents.h"

#include "Xml/FirstNode.h"
#include "Xml/NodeParser.h"
#include "Xml/Spelling.h"

namespace orv::xml {

namespace {

class RecordParser : public NodeParser {
public:
    explicit RecordParser(RecordEvents& receiver) : events(receiver) {}

private:
    static constexpr std::uint64_t rootDepth = 1;
    static constexpr std::uint64_t recordDepth = 2;
    static constexpr std::uint64_t fieldDepth = 3;

    void beginElement(const char* name, const char** /*attributes*/) override {
        if (getDepth() == rootDepth) {
            isOfInterest = events.takeRoot(unescapedName(name));
        }
        if (!isOfInterest) {
            return;
        }
        switch (getDepth()) {
        case recordDepth:
            recordName = unescapedName(name);
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
        } else if (getDepth() == recordDepth) {
            events.takeRecord(recordName, fields);
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

    RecordEvents& events;
    bool isOfInterest = true;
    std::string recordName;
    RecordEvents::Fields fields;
    std::string fieldName;
    FirstNode firstNode;
};

} // namespace

std::optional<RecordFailure> readRecords(std::string_view document, RecordEvents& events) {
    RecordParser parser(events);
    if (parser.parse(document)) {
        return std::nullopt;
    }
    const ParseFailure& failure = parser.getFailure();
    return RecordFailure{failure.line, failure.column, failure.reason};
}

} // namespace orv::xml

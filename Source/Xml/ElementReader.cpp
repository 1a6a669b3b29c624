#include "Xml/ElementReader.h"

#include "Xml/FirstNode.h"
#include "Xml/NodeParser.h"
#include "Xml/Spelling.h"

#include <utility>

namespace orv::xml {

class ElementReader::Reader : public NodeParser {
public:
    std::optional<ElementParts> read(std::string_view element) {
        markup = element;
        parts = {};
        firstNode = {};
        const bool isRead = parse(element) && isUtf8() && rootBegin == 0 && rootEnd == element.size();
        parts.attributes = std::move(surroundings.rootAttributes);
        return isRead ? std::optional(std::move(parts)) : std::nullopt;
    }

private:
    void beginElement(const char* name, const char** attributes) override {
        switch (getDepth()) {
        case 1:
            parts.name = unescapedName(name);
            rootBegin = getTagBegin();
            previousEnd = getTagEnd();
            break;
        case 2:
            childBegin = getTagBegin();
            parts.children.push_back({trimmed(between(previousEnd, childBegin)), {}, unescapedName(name), {}, true});
            parts.children.back().isPlain = attributes[0] == nullptr;
            break;
        default:
            noteNode(getDepth() - 1, {});
        }
    }

    void endElement(const char* /*name*/) override {
        if (getDepth() == 1) {
            parts.behind = trimmed(between(previousEnd, getTagBegin()));
            rootEnd = getTagEnd();
        } else if (getDepth() == 2) {
            previousEnd = getTagEnd();
            parts.children.back().markup = between(childBegin, previousEnd);
            parts.children.back().text = firstNode.end();
        }
    }

    void appendText(std::string_view piece) override {
        if (getDepth() == 2) {
            firstNode.appendText(piece);
        }
    }

    void appendComment(std::string_view text) override { noteNode(getDepth(), text); }

    void appendProcessingInstruction(std::string_view /*target*/, std::string_view data) override {
        noteNode(getDepth(), data);
    }

    /// Takes note of a node that isn't a text.
    void noteNode(std::uint64_t parentDepth, std::string_view value) {
        if (parentDepth == 2) {
            firstNode.appendOther(value);
            parts.children.back().isPlain = false;
        }
    }

    std::string_view between(std::uint64_t begin, std::uint64_t end) const { return markup.substr(begin, end - begin); }

    std::string_view markup;
    ElementParts parts;
    std::uint64_t rootBegin = 0;
    std::uint64_t rootEnd = 0;
    std::uint64_t previousEnd = 0; // of the child element before, or of the start tag
    std::uint64_t childBegin = 0;
    FirstNode firstNode; // of the child
};

ElementReader::ElementReader() : reader(std::make_unique<Reader>()) {}

ElementReader::~ElementReader() = default;

std::optional<ElementParts> ElementReader::read(std::string_view markup) {
    return reader->read(markup);
}

} // namespace orv::xml

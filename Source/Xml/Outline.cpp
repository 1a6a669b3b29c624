#include "Xml/Outline.h"

#include "Xml/Parser.h"
#include "Xml/Spelling.h"
#include "Xml/WellFormed.h"

#include <expat.h>

#include <utility>

namespace orv::xml {

class Outline::Reader : public Parser {
public:
    /// The outline of the document, or std::nullopt if it is none or uses a name that is not a valid XML name in UTF-8.
    std::optional<Outline> read(std::string document) {
        if (!parse(document)) {
            return std::nullopt;
        }
        if (outline.ownText) {
            outline.content = {0, outline.ownText->size()};
        }
        outline.source = std::move(document);
        outline.surroundings = std::move(surroundings);
        const bool areNamesKnown = isUtf8() || isWellFormed({"<r>", *outline.ownText, "</r>"});
        return areNamesKnown ? std::optional(std::move(outline)) : std::nullopt;
    }

private:
    void beginElement(const char* name, const char** attributes) override {
        if (getDepth() == 1) {
            beginRoot(name);
            return;
        }
        if (getDepth() == 2) {
            outline.elements.push_back({outline.ownText ? outline.ownText->size() : getTagBegin(), 0});
        }
        if (hasDoctype()) {
            // The tag may name entities, and lack attributes, that are declared there.
            outline.ownText->append("<").append(name).append(attributeMarkup(attributes)).append(">");
        } else if (outline.ownText) {
            handOn();
        }
    }

    void beginRoot(const char* name) {
        outline.rootName = unescapedName(name);
        if (hasDoctype()) {
            takeTextAsData();
        }
        if (hasDoctype() || !isUtf8()) {
            outline.ownText.emplace();
        } else {
            setHandsOn(false);
            outline.content.begin = getTagEnd();
        }
    }

    void endElement(const char* name) override {
        if (getDepth() == 1) {
            setHandsOn(true);
            outline.content.end = getTagBegin();
            return;
        }
        if (hasDoctype()) {
            outline.ownText->append("</").append(name).append(">");
        } else if (outline.ownText) {
            handOn();
        }
        if (getDepth() == 2) {
            outline.elements.back().end = outline.ownText ? outline.ownText->size() : getTagEnd();
        }
    }

    /// From here on text is read as data and spelled anew: what an entity stands for may mean something else in its
    /// place, as "]]" does ahead of ">".
    void takeTextAsData() {
        XML_SetCharacterDataHandler(getExpat(), [](void* self, const XML_Char* data, int length) {
            handle<Reader>(self, [=](Reader& reader) {
                *reader.outline.ownText += textMarkup(std::string_view(data, static_cast<std::size_t>(length)));
            });
        });
        // An empty section is an empty text.
        XML_SetCdataSectionHandler(
            getExpat(),
            [](void* self) { handle<Reader>(self, [](Reader& reader) { *reader.outline.ownText += "<![CDATA[]]>"; }); },
            [](void*) {});
    }

    void appendMarkup(std::string_view markup) override { *outline.ownText += markup; }

    Outline outline;
};

std::optional<Outline> Outline::parse(std::string document) {
    return Reader().read(std::move(document));
}

std::string_view Outline::getContent() const {
    return trimmed(cut(content.begin, content.end));
}

Outline::Part Outline::operator[](std::size_t number) const {
    const auto [begin, end] = elements[number];
    const std::size_t previousEnd = number == 0 ? content.begin : elements[number - 1].end;
    return {trimmed(cut(previousEnd, begin)), cut(begin, end), trimmed(cut(end, content.end))};
}

std::string_view Outline::cut(std::size_t begin, std::size_t end) const {
    return std::string_view(ownText ? *ownText : source).substr(begin, end - begin);
}

std::string Outline::Part::getName() const {
    const std::string_view tag = element.substr(1);
    return unescapedName(tag.substr(0, tag.find_first_of(" \t\r\n/>")));
}

} // namespace orv::xml

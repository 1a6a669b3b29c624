#include "Xml/Outline.h"

#include "Xml/Buffer.h"
#include "Xml/Escape.h"
#include "Xml/Parser.h"

#include <expat.h>

#include <algorithm>
#include <utility>

namespace orv::xml {

class Outline::Reader : public Parser {
public:
    explicit Reader(std::size_t expected) : expectedSize(expected) {}

    /// The outline, once it has been parsed; nothing if a name in its content would be none in UTF-8.
    std::optional<Outline> takeOutline() {
        outline.surroundings = std::move(surroundings);
        outline.content.resize(outline.content.find_last_not_of(whiteSpace) + 1);
        return accepts({"<r>", outline.content, "</r>"}) ? std::optional(std::move(outline)) : std::nullopt;
    }

private:
    void beginElement(const char* name, const char** attributes) override {
        if (getDepth() == 1) {
            if (hasDoctype()) {
                takeTextAsData();
            }
            outline.rootName = unescapedName(name);
            outline.content.reserve(std::min(expectedSize, maximumExpectation));
            return;
        }
        if (getDepth() == 2) {
            outline.elements.push_back({outline.content.size(), 0});
        }
        if (hasDoctype()) {
            // The tag may name entities, and lack attributes, that are declared there.
            outline.content.append("<").append(name).append(markupOf(attributes)).append(">");
        } else {
            handOn();
        }
    }

    void endElement(const char* name) override {
        if (getDepth() == 1) {
            return;
        }
        if (hasDoctype()) {
            outline.content.append("</").append(name).append(">");
        } else {
            handOn();
        }
        if (getDepth() == 2) {
            outline.elements.back().end = outline.content.size();
        }
    }

    /// From here on text is read as data and spelled anew: what an entity stands for may mean something else in its
    /// place, as "]]" does ahead of ">".
    void takeTextAsData() {
        XML_SetCharacterDataHandler(getExpat(), [](void* self, const XML_Char* data, int length) {
            handle<Reader>(self, [=](Reader& reader) {
                reader.outline.content += markupOf(std::string_view(data, static_cast<std::size_t>(length)));
            });
        });
        // An empty section is an empty text.
        XML_SetCdataSectionHandler(
            getExpat(),
            [](void* self) { handle<Reader>(self, [](Reader& reader) { reader.outline.content += "<![CDATA[]]>"; }); },
            [](void*) {});
    }

    void appendMarkup(std::string_view markup) override { outline.content += markup; }

    std::size_t expectedSize;
    Outline outline;
};

std::optional<Outline> Outline::parse(std::istream& stream, std::size_t expectedSize) {
    Reader reader(expectedSize);
    return reader.parse(stream) ? reader.takeOutline() : std::nullopt;
}

std::string_view Outline::getContent() const {
    return trimmed(content);
}

Outline::Part Outline::operator[](std::size_t number) const {
    const Range& range = elements[number];
    const std::size_t previousEnd = number == 0 ? 0 : elements[number - 1].end;
    const std::string_view all = content;
    return {trimmed(all.substr(previousEnd, range.begin - previousEnd)),
            all.substr(range.begin, range.end - range.begin), trimmed(all.substr(range.end))};
}

std::string Outline::Part::getName() const {
    const std::string_view tag = element.substr(1);
    return unescapedName(tag.substr(0, tag.find_first_of(" \t\r\n/>")));
}

} // namespace orv::xml

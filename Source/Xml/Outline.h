#pragma once

#include "OrvExport.h"
#include "Xml/Surroundings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::xml {

/// A parsed document as the markup of its parts: for documents whose elements are read one by one, and for what has to
/// go through a rewrite as it stands. Of a document in UTF-8 it takes the bytes and 16 more an element. In another
/// encoding, or with a document type declaration, its content is kept beside them.
///
/// Markup is in UTF-8 and otherwise as parsed, without white space at its ends. If the document has a document type
/// declaration, entities are expanded, and texts and tags normalised, so that the markup doesn't need it.
class ORV_XML_EXPORT Outline {
public:
    /// Takes the bytes of a document, and parses them as File does: no value for what File has none for, but a document
    /// may be longer.
    static std::optional<Outline> parse(std::string document);

    /// The bytes of the document as parse was given them.
    const std::string& getSource() const { return source; }

    /// The name of the root element.
    const std::string& getRootName() const { return rootName; }

    /// What stands around the content of the root.
    const Surroundings& getSurroundings() const { return surroundings; }

    /// What stands between the tags of the root. Valid until the outline ends or is moved, as are the parts.
    std::string_view getContent() const;

    /// A child element of the root: ahead, element and behind are the rest of the content after the previous element.
    struct ORV_XML_EXPORT Part {
        std::string_view ahead;
        std::string_view element;
        std::string_view behind;

        /// The name of the element.
        std::string getName() const;
    };

    /// The child elements of the root, by their number from 0.
    Part operator[](std::size_t number) const;

    /// How many child elements the root has.
    std::size_t size() const { return elements.size(); }

private:
    class Reader;

    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    /// A range of the text that the content lies in.
    std::string_view cut(std::size_t begin, std::size_t end) const;

    std::string source;
    std::optional<std::string> ownText; // the content, unless it lies in the source
    std::string rootName;
    Surroundings surroundings;
    Range content{};
    std::vector<Range> elements;
};

} // namespace orv::xml

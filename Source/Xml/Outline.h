#pragma once

#include "Export.h"
#include "Xml/Surroundings.h"

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::xml {

/// A parsed document as the markup of its parts: for documents whose elements are read one by one, each as a File of
/// its own, and for what has to go through a rewrite as it stands. It takes little more memory than the document.
///
/// Markup is in UTF-8 and otherwise as parsed, without white space at its ends. If the document has a document type
/// declaration, entities are expanded, and texts and tags normalised, so that the markup doesn't need it.
class ORV_EXPORT Outline {
public:
    /// Parses as File does, and gives no value for what File gives none, but a document may be longer. expectedSize is
    /// that of the document in bytes, as far as it is known.
    static std::optional<Outline> parse(std::istream& stream, std::size_t expectedSize);

    const std::string& getRootName() const { return rootName; }

    /// What stands around the content of the root.
    const Surroundings& getSurroundings() const { return surroundings; }

    /// What stands between the tags of the root. Valid for as long as the outline, as are the parts.
    std::string_view getContent() const;

    /// A child element of the root. The three together are the content from the end of the child element before.
    struct Part {
        std::string_view ahead;
        std::string_view element;
        std::string_view behind;

        /// The name of the element.
        std::string getName() const;
    };

    /// The child elements of the root, by their number from 0.
    Part operator[](std::size_t number) const;
    std::size_t size() const { return elements.size(); }

private:
    class Reader;

    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    std::string rootName;
    Surroundings surroundings;
    std::string content;
    std::vector<Range> elements; // in the content
};

} // namespace orv::xml

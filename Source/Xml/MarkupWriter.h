#pragma once

#include "OrvExport.h"
#include "Xml/LineEnding.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace orv::xml {

/// Writes a document piece by piece, from its beginning to its end, and makes no nodes: for a document of many like
/// elements, which takes a fraction of the time and memory that a File takes. Names and texts are escaped as File
/// tells.
///
/// Markup isn't checked. appendText and endElement require an open element. More than half a billion names raise
/// std::length_error.
class ORV_XML_EXPORT MarkupWriter {
public:
    /// expectedSize is that of the whole document in bytes; it may get longer.
    explicit MarkupWriter(LineEnding lineEnding, std::size_t expectedSize = 0);
    MarkupWriter(const MarkupWriter&) = delete;
    MarkupWriter& operator=(const MarkupWriter&) = delete;
    ~MarkupWriter();

    /// Takes back what was written behind that size, where the same elements must have been open.
    void cut(std::size_t size);

    /// The XML declaration, on a line of its own; if any, first of all.
    void appendDeclaration();

    /// What stands ahead of the root or behind it, on lines of its own and otherwise as it is.
    void appendOutside(std::string_view markup);

    /// Starts an element on a line of its own, with attributes as Surroundings tells. isInline says that what follows
    /// in it isn't put on lines of its own, since there is text among it; after a text nothing is.
    void startElement(std::string_view name, std::string_view attributes = {}, bool isInline = false);

    /// A text of the open element, given whole: what begins an escape in one piece and ends it in the next is missed.
    void appendText(std::string_view text);

    /// Well-formed content of an element, on a line of its own and otherwise as it is; nothing if it is empty.
    void appendMarkup(std::string_view markup);

    /// Says that the open element has content that isn't written here, so that it doesn't end as an empty tag.
    void setFilled();

    /// Ends the element that was started last and hasn't been ended.
    void endElement();

    /// Starts an element with a text, and ends it.
    void appendElement(std::string_view name, std::string_view text);

    /// What has been written so far, until more is or the writer ends.
    std::string_view getText() const;

    /// The size of that in bytes. A child element, with the line break and the blanks ahead of it, stands between the
    /// size before it was started and the size after it was ended.
    std::size_t getSize() const;

private:
    struct State;

    std::unique_ptr<State> state;
};

} // namespace orv::xml

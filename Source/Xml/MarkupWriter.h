#pragma once

#include "Export.h"
#include "Xml/LineEnding.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace orv::xml {

/// Writes a document from its beginning to its end, without a document object: for many elements in a row, which File
/// would take several times as long and as much memory to save. Names and texts are escaped as File tells.
///
/// Markup isn't checked. appendText and endElement require an open element. More than half a billion names raise
/// std::length_error.
class ORV_EXPORT MarkupWriter {
public:
    /// expectedSize is that of the whole document in bytes; it may get longer.
    explicit MarkupWriter(LineEnding lineEnding, std::size_t expectedSize = 0);
    ~MarkupWriter();

    MarkupWriter(const MarkupWriter&) = delete;
    MarkupWriter& operator=(const MarkupWriter&) = delete;

    /// Begins another document. What was written goes, but the room for it stays.
    void restart(std::size_t expectedSize);

    /// The XML declaration, on a line of its own; if any, first of all.
    void appendDeclaration();

    /// What stands ahead of the root or behind it, on lines of its own and otherwise as it is.
    void appendOutside(std::string_view markup);

    /// Starts an element on a line of its own, with attributes as Surroundings tells. isInline says that what follows
    /// in it isn't put on lines of its own, since there is text among it; after a text nothing is.
    void startElement(std::string_view name, std::string_view attributes = {}, bool isInline = false);

    /// A text of the open element, given whole: what begins an escape in one piece and ends it in the next is missed.
    void appendText(std::string_view text);

    /// Well-formed content of an element, on a line of its own and otherwise as it is.
    void appendMarkup(std::string_view markup);

    /// Ends the element that was started last and hasn't been ended.
    void endElement();

    /// Starts an element with a text, and ends it.
    void appendElement(std::string_view name, std::string_view text);

    /// What has been written so far, until more is.
    std::string_view getText() const;

private:
    struct State;

    std::unique_ptr<State> state;
};

} // namespace orv::xml

#pragma once

#include "OrvExport.h"
#include "Xml/ParseFailure.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::xml {

/// Is told of the elements of a document while it is read. For documents of other forms than this project's: names and
/// texts come as they are, without what File understands as an escape.
class ORV_XML_EXPORT ElementEvents {
public:
    virtual ~ElementEvents() = default;

    using Attributes = std::vector<std::pair<std::string_view, std::string_view>>;

    /// A start tag, on that line, from 1 on. The views are good for the length of the call.
    virtual void beginElement(std::string_view name, const Attributes& attributes, std::uint64_t line) = 0;

    /// The end of the element that began last and hasn't ended. The text is what stands behind its last start or end
    /// tag, so for an element without child elements all of its text.
    virtual void endElement(std::string_view text) = 0;
};

/// Reads one document as File::parse does, calling events as it goes, and returns why it is none, or nothing.
ORV_XML_EXPORT std::optional<ParseFailure> readElements(std::istream& stream, ElementEvents& events);

} // namespace orv::xml

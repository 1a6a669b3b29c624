#pragma once

#include "OrvExport.h"
#include "Xml/ElementParts.h"

#include <memory>
#include <optional>
#include <string_view>

namespace orv::xml {

/// Takes elements apart, one after another, each in one pass. Names and values are those that a File of the element's
/// markup has. Making a reader costs more than reading a short element, so one serves for many.
class ORV_XML_EXPORT ElementReader {
public:
    ElementReader();
    ~ElementReader();

    ElementReader(const ElementReader&) = delete;
    ElementReader& operator=(const ElementReader&) = delete;

    /// The parts of the element, for as long as the markup lasts. No value if that isn't one well-formed element in
    /// UTF-8, from its first byte to its last.
    std::optional<ElementParts> read(std::string_view markup);

private:
    class Reader;

    std::unique_ptr<Reader> reader;
};

} // namespace orv::xml

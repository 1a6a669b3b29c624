#pragma once

#include "OrvExport.h"
#include "Xml/ParseFailure.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::xml {

/// Is told of the elements below the root of a document, in one pass over that.
class ORV_XML_EXPORT ChildEvents {
public:
    virtual ~ChildEvents() = default;

    /// Names and values, in the order of the document.
    using Fields = std::vector<std::pair<std::string, std::string>>;

    /// The root, ahead of all else. If this returns false, nothing else is told.
    virtual bool takeRoot(const std::string& name) = 0;

    /// A child element of the root, with name and value of each of its own child elements that has a child node: the
    /// value is that of the first one. Names and values are those that a File of the document has.
    virtual void takeChild(const std::string& name, const Fields& fields) = 0;
};

/// Reads one document as File::parse does, calling events as it goes, and returns why it is none, or nothing.
ORV_XML_EXPORT std::optional<ParseFailure> readChildren(std::string_view document, ChildEvents& events);

} // namespace orv::xml

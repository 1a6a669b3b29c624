#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// Why a document isn't read, as the end of a sentence that begins with its name.
class XmlError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An element of a document of another program.
struct XmlElement {
    std::string name; ///< Without the prefix of a namespace.
    std::map<std::string, std::string, std::less<>> attributes;
    std::string text; ///< All that stands directly in it.
    std::vector<XmlElement> children;

    /// The first child of the name; null if it has none.
    const XmlElement* child(std::string_view childName) const;

    /// The text of the first child of the name; empty if it has none.
    std::string textOf(std::string_view childName) const;

    /// Empty if it has none.
    std::string attribute(std::string_view attributeName) const;
};

/// The root of a document with all that is in it. Throws XmlError if it isn't well-formed, has a document type
/// declaration, with which a small document can become a huge one, or is nested more than 64 deep.
XmlElement readXml(std::string_view document);

} // namespace annotate

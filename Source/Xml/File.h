#pragma once

#include "OrvExport.h"
#include "Xml/Element.h"
#include "Xml/ErrorHandler.h"
#include "Xml/LineEnding.h"

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orv::xml {

class Document;

/// How much the messages to handlers say.
enum class VerboseLevel {
    Default = -1, ///< The reason.
    Full = 4      ///< The name of the document, and the line and column, from 1, ahead of the reason.
};

/// What a document is held against. Neither value asks for more than well-formedness, which is always checked.
enum class ValidateLevel { Default = -1, WellFormed = 1 };

/// The character encoding of a saved document.
enum class Encoding { Utf8 = 0 };

/// An XML document in memory: made once, by create or by parse, and thrown away as a whole.
///
/// What is saved is well-formed XML 1.0 in UTF-8, whatever names and texts it was given, and parse brings
/// each of them back byte for byte. What XML can't carry is written in the form _xHHHH_ with the hexadecimal
/// number of a UTF-16 code unit, known from office documents; a byte that isn't part of valid UTF-8 is
/// the lone surrogate _xDC80_ to _xDCFF_; an underscore that would begin such a form is _x005F_; a name of no
/// characters is _x_. An empty text is an empty CDATA section.
///
/// Text next to text is one text node. Of a parsed document elements, texts, comments and processing instructions below
/// the root are nodes; CDATA sections are text, entities are expanded. What stands around the root's content, its
/// attributes included, is kept (the attributes spelled anew), but for a document type declaration. Other attributes
/// are passed over, and a name with a colon comes out escaped: markup that must not change goes through an Outline and
/// a MarkupWriter.
///
/// A document has up to 4 GiB of text and up to 4 billion nodes; appending more raises std::length_error. The depth of
/// a document is bounded by memory alone.
class ORV_XML_EXPORT File {
public:
    /// An empty document object. The handler must outlive it.
    explicit File(errorhandler::ExceptionInterface* handler = nullptr, VerboseLevel verbose = VerboseLevel::Default,
                  ValidateLevel validate = ValidateLevel::Default);
    ~File();

    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Makes a document with a root element of that name and returns the root. version is that of XML, 1.0 if
    /// it is empty; declaration decides whether a saved document begins with the XML declaration. Returns no
    /// value, and changes nothing, for any version but 1.0, and if there is a document already.
    std::optional<Element> create(std::string_view rootName, std::string_view version, bool declaration);

    /// Reads one document from the stream's position to its end and returns the root element. The stream isn't
    /// used after that. UTF-8, UTF-16, ISO-8859-1 and US-ASCII are understood, by byte order mark or
    /// declaration. documentName is what messages call the document. Returns no value, and leaves the object
    /// empty, for what isn't one well-formed document, declares more than 256 entities, expands them to a multiple of
    /// its size, has a name with a character that Latin-1 and UTF-16 documents alone could have there, is too long, or
    /// can't be read; and also, changing nothing, if there is a document already.
    std::optional<Element> parse(std::istream& stream, const std::string& documentName,
                                 errorhandler::ParseInterface* handler);

    /// Writes the whole document to the stream, from its present position and in one call, and neither seeks nor
    /// flushes. Returns true if the stream is good afterwards; false if it isn't, or if there is no document.
    bool save(std::ostream& stream, errorhandler::WriteInterface* handler, Encoding encoding,
              LineEnding lineEnding) const;

private:
    bool reportExistingDocument() const;

    errorhandler::ExceptionInterface* exceptionHandler;
    VerboseLevel verboseLevel;
    std::unique_ptr<Document> document; // null until there is one
};

} // namespace orv::xml

#include "Xml/File.h"

#include "Xml/Document.h"
#include "Xml/MarkupWriter.h"
#include "Xml/Parser.h"

#include <ostream>

namespace orv::xml {

namespace {

template <typename Handler>
void report(Handler* handler, std::string_view message) {
    if (handler != nullptr) {
        handler->report(message);
    }
}

} // namespace

File::File(errorhandler::ExceptionInterface* handler, VerboseLevel verbose, ValidateLevel /*validate*/)
    : exceptionHandler(handler), verboseLevel(verbose) {}

File::~File() = default;

std::optional<Element> File::create(std::string_view rootName, std::string_view version, bool declaration) {
    if (reportExistingDocument()) {
        return std::nullopt;
    }
    if (!version.empty() && version != "1.0") {
        report(exceptionHandler, "only XML 1.0 is known");
        return std::nullopt;
    }
    document = std::make_unique<Document>(declaration);
    return Element(*document, document->appendElement(noNode, rootName));
}

std::optional<Element> File::parse(std::istream& stream, const std::string& documentName,
                                   errorhandler::ParseInterface* handler) {
    if (reportExistingDocument()) {
        return std::nullopt;
    }
    ParseFailure failure;
    document = Document::parse(stream, failure);
    if (document) {
        return Element(*document, 0);
    }
    const auto& [reason, line, column] = failure;
    if (verboseLevel == VerboseLevel::Full) {
        report(handler,
               documentName + ", line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason);
    } else {
        report(handler, reason);
    }
    return std::nullopt;
}

bool File::save(std::ostream& stream, errorhandler::WriteInterface* handler, Encoding /*encoding*/,
                LineEnding lineEnding) const {
    if (!document) {
        report(handler, "there is no document to save");
        return false;
    }
    MarkupWriter markup(lineEnding, document->estimateSize());
    document->write(markup);
    const std::string_view text = markup.getText();
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (!stream.good()) {
        report(handler, "the stream can't be written");
        return false;
    }
    return true;
}

/// A document object holds one document in its life, so that handles stay valid.
bool File::reportExistingDocument() const {
    if (document) {
        report(exceptionHandler, "there is a document already");
    }
    return document != nullptr;
}

} // namespace orv::xml

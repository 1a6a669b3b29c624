#include "Host/ReadRecords.h"

#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Utilities/DocumentReading.h"
#include "Utilities/StreamContent.h"
#include "Xml/ChildEvents.h"

#include <istream>
#include <string_view>
#include <system_error>
#include <utility>

namespace orv::host {

namespace {

using domain::shared::enhancementsforreferencemodel::Factory;
using Reason = ReadFailure::Reason;

class Collector : public xml::ChildEvents {
public:
    bool takeRoot(const std::string& name) override {
        if (name != "Enhancements") {
            read.failure = {Reason::OtherRoot, name};
        }
        return !read.failure;
    }

    void takeChild(const std::string& name, const Fields& fields) override {
        if (auto record = Factory::createEntityFromName(name)) {
            record->setAttributes(fields);
            read.records.push_back(std::move(record));
        } else {
            ++read.leftOut[name];
        }
    }

    RecordsRead read;
};

RecordsRead failed(ReadFailure failure) {
    RecordsRead read;
    read.failure = std::move(failure);
    return read;
}

RecordsRead recordsIn(std::string_view document) {
    Collector collector;
    if (auto failure = xml::readChildren(document, collector)) {
        return failed({Reason::NotWellFormed, failure->reason, failure->line, failure->column});
    }
    return std::move(collector.read);
}

} // namespace

std::string ReadFailure::toString() const {
    switch (reason) {
    case Reason::Missing:
        return "There is no file.";
    case Reason::Unreadable:
        return "The file can't be read: " + detail + '.';
    case Reason::NotWellFormed:
        return "Line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + detail + '.';
    case Reason::OtherRoot:
        return "The root is " + detail + ", not Enhancements.";
    }
    return {};
}

RecordsRead readRecords(const std::filesystem::path& path) {
    std::error_code error;
    if (const auto reading = utilities::readDocument(path, error)) {
        return recordsIn(reading->content);
    }
    if (error == std::errc::no_such_file_or_directory) {
        return failed({Reason::Missing, error.message()});
    }
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    const bool isOther = std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
    return failed({Reason::Unreadable, isOther ? "it isn't a regular file" : error.message()});
}

RecordsRead readRecords(std::istream& stream) {
    if (!stream.good()) {
        return failed({Reason::Unreadable, "the stream isn't good"});
    }
    const auto document = utilities::contentOf(stream);
    return document ? recordsIn(*document) : failed({Reason::Unreadable, "the stream can't be read to its end"});
}

} // namespace orv::host

#include "Assert/Assert.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsState.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Utilities/Beside.h"
#include "Utilities/DocumentReading.h"
#include "Utilities/LockedFile.h"
#include "Utilities/ScopeGuard.h"
#include "Utilities/StreamContent.h"
#include "Xml/ElementReader.h"
#include "Xml/Outline.h"

#include <chrono>
#include <istream>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

constexpr std::string_view readName = "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::read";

/// Name and text of each child that has content.
std::vector<std::pair<std::string, std::string>> attributesOf(const xml::ElementParts& record) {
    std::vector<std::pair<std::string, std::string>> attributes;
    for (const xml::ElementParts::Child& child : record.children) {
        if (child.text) {
            attributes.emplace_back(child.name, *child.text);
        }
    }
    return attributes;
}

/// An element with the document that it refers to.
struct LoadedElement {
    std::shared_ptr<const xml::Outline> document;
    xml::ElementParts parts;
};

/// Locks the file for the end of the series, even if another program holds it for a moment.
std::unique_ptr<utilities::LockedFile> lockSoon(const std::filesystem::path& path,
                                                const utilities::SavingNote& series) {
    constexpr int maximumAttempts = 1000;
    constexpr auto moment = std::chrono::milliseconds(1);
    std::error_code error = std::make_error_code(std::errc::resource_unavailable_try_again);
    std::unique_ptr<utilities::LockedFile> file;
    for (int attempt = 0; attempt < maximumAttempts && error == std::errc::resource_unavailable_try_again; ++attempt) {
        if (attempt > 0) {
            std::this_thread::sleep_for(moment);
        }
        file = utilities::LockedFile::tryLock(path, true, utilities::LockedFile::Access::ReadWrite, error, &series);
    }
    return file;
}

} // namespace

bool EnhancementsFile::readFile() {
    KnownFiles& knownFiles = Enhancements::getOrCreateEnhancementsDb()->state->knownFiles;
    std::error_code ignored;
    auto reading = utilities::readDocument(getFilePath(), ignored);
    const auto digest = utilities::Digest::of(reading ? reading->content : "");
    auto document = reading ? parse(std::move(reading->content)) : std::nullopt;
    if (!document) {
        knownFiles.setForeign(utilities::resolved(getFilePath()));
        return false;
    }
    const auto state = reading->state.isOld() ? std::optional(reading->state) : std::nullopt;
    knownFiles.prepare(reading->path);
    knownFiles.setCurrent({state, digest, {}});
    load(*std::move(document));
    return true;
}

bool EnhancementsFile::read(std::istream& stream) {
    if (assert::Assert::isEnabled() && !stream.good()) {
        report("Stream must be open", readName, 66);
    }
    auto content = stream.good() ? utilities::contentOf(stream) : std::string();
    auto document = content ? parse(*std::move(content)) : std::nullopt;
    if (!document) {
        return false;
    }
    load(*std::move(document));
    return true;
}

/// The document that the content is; nothing if it is none of records.
std::optional<xml::Outline> EnhancementsFile::parse(std::string content) {
    if (assert::Assert::isEnabled() && content.empty()) {
        report("You have got an empty file without header", readName, 67);
    }
    auto document = content.empty() ? std::nullopt : xml::Outline::parse(std::move(content));
    if (!document) {
        return std::nullopt;
    }
    if (assert::Assert::isEnabled() && document->getRootName() != RecordDocument::rootName) {
        report("Error in Enhancements xml file.", readName, 76);
    }
    return document->getRootName() == RecordDocument::rootName ? std::move(document) : std::nullopt;
}

/// Adds the records to the process's database, each with a rewrite of the file. What isn't one yet is carried.
void EnhancementsFile::load(xml::Outline outline) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    RecordDocument& records = database->state->document;
    const auto document = std::make_shared<const xml::Outline>(std::move(outline));
    records.startLoad(document);
    const ScopeGuard end([&database] { endLoad(*database); });
    xml::ElementReader reader;
    while (const auto part = records.startTurn()) {
        if (auto record = Factory::createEntityFromName(part->getName())) {
            if (auto parts = reader.read(part->element)) {
                record->setAttributes(attributesOf(*parts));
                const auto element = std::make_shared<const LoadedElement>(LoadedElement{document, *std::move(parts)});
                records.offer(*record, std::make_unique<CarriedFields>(
                                           std::shared_ptr<const xml::ElementParts>(element, &element->parts)));
                Enhancements::addEnhancement(std::move(record));
            }
        }
        records.endTurn();
    }
}

/// Also if a kind's exception ended the load. What the rewrites left in the file is on the disk then.
void EnhancementsFile::endLoad(const Enhancements& database) {
    database.state->document.endLoad();
    utilities::SavingNote& note = database.state->loadNote;
    if (!note.isOpen()) {
        return;
    }
    if (const auto file = lockSoon(getFilePath(), note)) {
        file->endSeries(note);
    } else {
        note.leave();
    }
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

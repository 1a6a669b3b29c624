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
#include <new>
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

/// What the attempt to lock the file returns, which is repeated for up to a second while another program holds it.
template <typename Attempt>
auto soon(const Attempt& attempt) {
    constexpr auto moment = std::chrono::milliseconds(1);
    std::error_code error;
    auto file = attempt(error);
    for (int remaining = 1000; !file && error == std::errc::resource_unavailable_try_again && remaining > 0;
         --remaining) {
        std::this_thread::sleep_for(moment);
        file = attempt(error);
    }
    return file;
}

/// Makes a record of each element that one can be made of, in its turn, and passes it on.
template <typename Action>
void takeTurns(RecordDocument& records, const std::shared_ptr<const xml::Outline>& document, const Action& pass) {
    xml::ElementReader reader;
    while (const auto part = records.startTurn()) {
        if (auto record = Factory::createEntityFromName(part->getName())) {
            if (auto parts = reader.read(part->element)) {
                record->setAttributes(attributesOf(*parts));
                const auto element = std::make_shared<const LoadedElement>(LoadedElement{document, *std::move(parts)});
                records.offer(*record, std::make_unique<CarriedFields>(
                                           std::shared_ptr<const xml::ElementParts>(element, &element->parts)));
                pass(std::move(record));
            }
        }
        records.endTurn();
    }
}

} // namespace

bool EnhancementsFile::readFile() {
    std::error_code ignored;
    const auto document = startReading(ignored);
    if (document) {
        load(document);
    }
    return document != nullptr;
}

bool EnhancementsFile::readFileAtOnce() {
    std::error_code error;
    const auto document = startReading(error);
    return document ? loadAtOnce(document) : error == std::errc::no_such_file_or_directory;
}

/// Reads the file and has the database carry its elements. Null if it can't be read, which the error tells, or if it is
/// no document of records.
std::shared_ptr<const xml::Outline> EnhancementsFile::startReading(std::error_code& error) {
    KnownFiles& knownFiles = Enhancements::getOrCreateEnhancementsDb()->state->knownFiles;
    auto reading = utilities::readDocument(getFilePath(), error);
    const auto digest = utilities::Digest::of(reading ? reading->content : "");
    auto document = reading ? parse(std::move(reading->content)) : std::nullopt;
    if (!document) {
        knownFiles.setForeign(utilities::resolved(getFilePath()));
        return nullptr;
    }
    const auto state = reading->state.isOld() ? std::optional(reading->state) : std::nullopt;
    knownFiles.prepare(reading->path);
    auto loading = startLoad(*std::move(document));
    knownFiles.setCurrent({state, digest, {}}); // not before the elements of the file are carried
    return loading;
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
    load(startLoad(*std::move(document)));
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

/// Has the process's database carry all elements.
std::shared_ptr<const xml::Outline> EnhancementsFile::startLoad(xml::Outline outline) {
    auto document = std::make_shared<const xml::Outline>(std::move(outline));
    Enhancements::getOrCreateEnhancementsDb()->state->document.startLoad(document);
    return document;
}

/// Adds the records to the process's database, each with a rewrite of the file. What isn't one yet is carried.
void EnhancementsFile::load(const std::shared_ptr<const xml::Outline>& document) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    const ScopeGuard end([&database] { endLoad(*database); });
    takeTurns(database->state->document, document, Enhancements::addEnhancement);
}

/// The same with one rewrite. Returns whether all are added and the file holds them.
bool EnhancementsFile::loadAtOnce(const std::shared_ptr<const xml::Outline>& document) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    auto& records = database->records;
    RecordDocument& carrying = database->state->document;
    const ScopeGuard end([&database] { endLoad(*database); });
    EnhancementsFile file(*database); // which ends sooner: the rewrite belongs to the load
    file.fileLock = soon([&file](std::error_code& error) { return file.lockAndProtect(error); });
    if (!file.fileLock) {
        return false;
    }
    records.reserve(records.size() + document->size());
    takeTurns(carrying, document, [&](std::unique_ptr<EnhancementBase> record) {
        carrying.add(*record);
        records.push_back(std::move(record));
    });
    return file.save();
}

/// Also if a kind's exception ended the load. What the rewrites left in the file is on the disk then.
void EnhancementsFile::endLoad(const Enhancements& database) noexcept {
    database.state->document.endLoad();
    utilities::SavingNote& note = database.state->loadNote;
    if (!note.isOpen()) {
        return;
    }
    try {
        const auto file = soon([&note](std::error_code& error) {
            return utilities::LockedFile::tryLock(getFilePath(), true, utilities::LockedFile::Access::ReadWrite, error,
                                                  &note);
        });
        if (file) {
            file->endSeries(note);
        }
    } catch (const std::bad_alloc&) {}
    note.leave(); // unless it has ended
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

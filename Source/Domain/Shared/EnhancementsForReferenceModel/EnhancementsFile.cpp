#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"

#include "Assert/Assert.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Utilities/ScopeGuard.h"
#include "Xml/File.h"
#include "Xml/MarkupWriter.h"
#include "Xml/Outline.h"

#include <fstream>
#include <map>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

constexpr const char* rootName = "Enhancements";

void report(std::string_view message, std::string_view function, std::uint32_t line) {
    constexpr std::string_view sourcePath = "Source/Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile";
    if (assert::Assert::isEnabled()) {
        assert::Assert::addAssert({0, message, function, sourcePath, line});
    }
}

constexpr std::string_view lockFileName =
    "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::lockFile";
constexpr std::string_view writeFileName =
    "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::writeFile";
constexpr std::string_view readName = "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::read";
constexpr std::string_view writeName = "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::write";

/// An attribute with the text that stands for its value, if one does: for an int, a bool and a text.
void appendAttribute(xml::MarkupWriter& document, const std::string& name, const object::PropertyValue& value) {
    if (const auto* const text = value.getIf<std::string>()) {
        document.appendElement(name, *text);
    } else if (const auto* const number = value.getIf<int>()) {
        document.appendElement(name, xml::const_Node::to_string(static_cast<long long>(*number)));
    } else if (const auto* const truth = value.getIf<bool>()) {
        document.appendElement(name, xml::const_Node::to_string(*truth));
    } else {
        document.startElement(name);
        document.endElement();
    }
}

void appendRecord(xml::MarkupWriter& document, const EnhancementBase& record) {
    document.startElement(record.getEntityName());
    const auto ownerId = record.ownerId.toGlobalId();
    document.appendElement("OwnerId", {ownerId.data(), ownerId.size()});
    for (const auto& [name, value] : record.getAttributes()) {
        appendAttribute(document, name, value);
    }
    document.endElement();
}

/// Name and text of each child that has content. An attribute's text is its first child node and no other.
std::vector<std::pair<std::string, std::string>> attributesOf(const xml::const_Node& record) {
    std::vector<std::pair<std::string, std::string>> attributes;
    for (auto child = record.FirstChildGet(); child; child = child->NextSiblingGet()) {
        if (const auto text = child->FirstChildGet()) {
            attributes.emplace_back(child->getNodeName(), text->getNodeValue());
        }
    }
    return attributes;
}

/// The record that the element stands for; null if it isn't of a kind that Factory makes, or too long for a document.
std::unique_ptr<EnhancementBase> recordFrom(const xml::Outline::Part& part) {
    auto record = Factory::createEntityFromName(part.getName());
    if (!record) {
        return nullptr;
    }
    std::istringstream stream{std::string(part.element)};
    xml::File file;
    const auto element = file.parse(stream, {}, nullptr);
    if (!element) {
        return nullptr;
    }
    record->setAttributes(attributesOf(*element));
    return record;
}

/// The states in which this process has read or left files: what a file holds that is still in its state is in memory.
std::map<utilities::FileState::Identity, utilities::FileState> knownStates;

bool isKnown(const utilities::FileState& state) {
    const auto known = knownStates.find(state.identity);
    return known != knownStates.end() && known->second == state;
}

} // namespace

std::filesystem::path EnhancementsFile::filePath;

void EnhancementsFile::setFilePath(std::filesystem::path path) {
    filePath = std::move(path);
}

EnhancementsFile::EnhancementsFile(const Enhancements& database) : enhancementsDb(database) {}

EnhancementsFile::~EnhancementsFile() {
    if (fileLock) {
        writeFile();
    }
}

bool EnhancementsFile::lockFile() {
    if (fileLock) {
        report("File is already locked", lockFileName, 24);
    }
    fileLock = tryLock();
    std::error_code ignored;
    if (!fileLock && !std::filesystem::exists(filePath, ignored)) {
        createFile();
        fileLock = tryLock();
    }
    return fileLock != nullptr;
}

void EnhancementsFile::writeFile() {
    if (!fileLock) {
        fileLock = tryLock();
    }
    if (!fileLock) {
        report("Not able to lock file before writing", writeFileName, 53);
        return;
    }
    writeThrough(*fileLock);
}

bool EnhancementsFile::write(std::ostream& stream) const {
    if (!stream.good()) {
        report("Stream must be open", writeName, 108);
        return false;
    }
    return useDocument(0, [&stream](std::string_view text) {
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
        return stream.good();
    });
}

/// Makes the document of the database, which replaces one of that size, and gives what use gives for its text. The
/// writer is kept for the next document: room of this size is dear to get. Meanwhile it isn't to be found, since a
/// kind's operations may throw or add a record.
template <typename Use>
bool EnhancementsFile::useDocument(std::uint64_t replacedSize, Use use) const {
    constexpr std::size_t growth = 8192; // as a rule more than a record
    auto document = std::move(enhancementsDb.idleWriter);
    if (!document) {
        document = std::make_unique<xml::MarkupWriter>(xml::LineEnding::Lf);
    }
    document->restart(replacedSize + growth);
    appendDocument(*document);
    const bool isUsed = use(document->getText());
    enhancementsDb.idleWriter = std::move(document);
    return isUsed;
}

void EnhancementsFile::appendDocument(xml::MarkupWriter& out) const {
    const CarriedMarkup& carried = enhancementsDb.carried;
    out.appendDeclaration();
    out.appendOutside(carried.surroundings.before);
    out.startElement(rootName, carried.surroundings.rootAttributes);
    auto piece = carried.getPieces().begin();
    const auto appendPieces = [&](std::size_t position) {
        for (; piece != carried.getPieces().end() && piece->position <= position; ++piece) {
            out.appendMarkup(piece->markup);
        }
    };
    for (std::size_t position = 0; position < enhancementsDb.records.size(); ++position) {
        appendPieces(position);
        appendRecord(out, *enhancementsDb.records[position]);
    }
    appendPieces(enhancementsDb.records.size());
    for (const std::string_view waiting : carried.getWaiting()) {
        if (!waiting.empty()) {
            out.appendMarkup(waiting);
        }
    }
    out.endElement();
    out.appendOutside(carried.surroundings.after);
}

bool EnhancementsFile::readFile() {
    // Taken before reading, so that a write meanwhile leaves a different state. It also keeps pipes from being opened,
    // which would block.
    const auto state = utilities::FileState::of(filePath);
    if (!state) {
        return false;
    }
    std::ifstream stream(filePath, std::ios_base::in | std::ios_base::binary);
    const auto document = stream.good() ? parse(stream, state->size) : std::nullopt;
    if (!document) {
        return false;
    }
    knownStates.insert_or_assign(state->identity, *state);
    load(*document);
    return true;
}

bool EnhancementsFile::read(std::istream& stream) {
    const auto document = parse(stream, 0);
    if (document) {
        load(*document);
    }
    return document.has_value();
}

/// Parses the stream; gives nothing if it holds no document of records.
std::optional<xml::Outline> EnhancementsFile::parse(std::istream& stream, std::uint64_t streamSize) {
    constexpr auto endOfFile = std::istream::traits_type::eof();
    if (!stream.good()) {
        report("Stream must be open", readName, 66);
    }
    if (assert::Assert::isEnabled() && stream.peek() == endOfFile) {
        report("You have got an empty file without header", readName, 67);
    }
    if (!stream.good() || stream.peek() == endOfFile) {
        return std::nullopt;
    }
    auto document = xml::Outline::parse(stream, streamSize);
    if (document && document->getRootName() != rootName) {
        report("Error in Enhancements xml file.", readName, 76);
        return std::nullopt;
    }
    return document;
}

/// Adds the records to the process's database, each with a rewrite of the file. What isn't one yet is carried.
void EnhancementsFile::load(const xml::Outline& document) {
    const auto database = Enhancements::getOrCreateEnhancementsDb();
    CarriedMarkup& carried = database->carried;
    carried.surroundings = document.getSurroundings();
    carried.startLoad(document.getContent());
    const ScopeGuard end([&] { carried.endLoad(database->records.size()); });
    for (std::size_t number = 0; number < document.size(); ++number) {
        const xml::Outline::Part part = document[number];
        carried.startTurn(database->records.size(), part);
        if (auto record = recordFrom(part)) {
            carried.setCandidate(record.get());
            Enhancements::addEnhancement(std::move(record));
        }
        carried.endTurn(database->records.size());
    }
}

/// Makes the directories and the file with its first document. That happens under the file's lock as well, so
/// that no two processes write the first document over each other.
void EnhancementsFile::createFile() const {
    std::error_code ignored;
    std::filesystem::create_directories(filePath.parent_path(), ignored);
    if (const auto newFile = utilities::FileLock::tryLockNew(filePath)) {
        writeThrough(*newFile);
    }
}

/// Takes the lock, unless the file holds something that this process doesn't know and that can't be kept.
std::unique_ptr<utilities::FileLock> EnhancementsFile::tryLock() const {
    auto lock = utilities::FileLock::tryLock(filePath, true, utilities::FileLock::Access::ReadWrite);
    if (!lock || lock->getState().size == 0 || isKnown(lock->getState())) {
        return lock;
    }
    return holdsDocument(*lock) || lock->keepCopy(filePath) ? std::move(lock) : nullptr;
}

/// Whether the file holds the database as it is. False if an operation of a kind throws.
bool EnhancementsFile::holdsDocument(const utilities::FileLock& lock) const {
    try {
        return useDocument(lock.getState().size, [&lock](std::string_view text) { return lock.holds(text); });
    } catch (...) {
        return false;
    }
}

/// Writes the database through the lock. An exception, of a kind's operations or for want of memory, goes no further:
/// the end of a guard has nobody to give it to. Nothing is written then.
void EnhancementsFile::writeThrough(utilities::FileLock& lock) const {
    try {
        // A failure isn't told. What it leaves in the file is in memory as well.
        useDocument(lock.getState().size, [&lock](std::string_view text) { return lock.replaceContent(text); });
        if (const auto state = lock.seal()) {
            knownStates.insert_or_assign(state->identity, *state);
        }
    } catch (...) {
        return;
    }
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

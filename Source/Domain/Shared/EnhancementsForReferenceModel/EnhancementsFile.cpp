#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"

#include "Assert/Assert.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Xml/File.h"
#include "Xml/NodeList.h"

#include <fstream>
#include <optional>
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

/// The text that stands for the value in the file: for an int, a bool and a text. The other alternatives have none.
std::optional<std::string> storedText(const object::PropertyValue& value) {
    switch (value.getIndex()) {
    case 1:
        return xml::const_Node::to_string(static_cast<long long>(value.get<int>()));
    case 3:
        return xml::const_Node::to_string(value.get<bool>());
    case 5:
        return value.get<std::string>();
    default:
        return std::nullopt;
    }
}

void appendRecord(xml::Element& root, const EnhancementBase& record) {
    xml::Element element = root.ElementNodeAppend(record.getEntityName());
    element.ElementNodeAppend("OwnerId").boTextNodeAppend(record.ownerId.toString(false));
    for (const auto& [name, value] : record.getAttributes()) {
        xml::Element attribute = element.ElementNodeAppend(name);
        if (const auto text = storedText(value)) {
            attribute.boTextNodeAppend(*text);
        }
    }
}

/// Name and text of each child that has content. An attribute's text is its first child node and no other.
std::vector<std::pair<std::string, std::string>> attributesOf(const xml::const_Element& record) {
    std::vector<std::pair<std::string, std::string>> attributes;
    for (auto child = record.FirstChildGet(); child; child = child->NextSiblingGet()) {
        if (const auto text = child->FirstChildGet()) {
            attributes.emplace_back(child->getNodeName(), text->getNodeValue());
        }
    }
    return attributes;
}

void addRecord(const xml::const_Element& element) {
    if (auto record = Factory::createEntityFromName(element.getNodeName())) {
        record->setAttributes(attributesOf(element));
        Enhancements::addEnhancement(std::move(record));
    }
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
    std::error_code ignored;
    if (!std::filesystem::exists(filePath, ignored)) {
        createFile();
    }
    fileLock = tryLock();
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
    xml::File file(nullptr, xml::VerboseLevel::Default, xml::ValidateLevel::WellFormed);
    auto root = file.create(rootName, {}, true);
    if (!root) {
        return false;
    }
    for (const auto& record : enhancementsDb.getRecords()) {
        appendRecord(*root, *record);
    }
    return file.save(stream, nullptr, xml::Encoding::Utf8, xml::LineEnding::Lf);
}

bool EnhancementsFile::readFile() {
    // The opening of a pipe would wait for its other end.
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(filePath, ignored)) {
        return false;
    }
    std::ifstream stream(filePath, std::ios_base::in | std::ios_base::binary);
    return stream.good() && read(stream);
}

bool EnhancementsFile::read(std::istream& stream) {
    constexpr auto endOfFile = std::istream::traits_type::eof();
    if (!stream.good()) {
        report("Stream must be open", readName, 66);
    }
    if (assert::Assert::isEnabled() && stream.peek() == endOfFile) {
        report("You have got an empty file without header", readName, 67);
    }
    if (!stream.good() || stream.peek() == endOfFile) {
        return false;
    }
    xml::File file(nullptr, xml::VerboseLevel::Full, xml::ValidateLevel::WellFormed);
    auto root = file.parse(stream, rootName, nullptr);
    if (!root) {
        return false;
    }
    if (!root->boNodeNameIs(rootName)) {
        report("Error in Enhancements xml file.", readName, 76);
        return false;
    }
    for (auto node = root->ChildNodesGet().getFirstItem(); node; node = node->NextSiblingGet()) {
        if (const auto element = xml::const_Element::toWrapper(*node)) {
            addRecord(*element);
        }
    }
    return true;
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

/// Writes the database through the lock. An exception of a kind's operations goes no further: a guard's end has nobody
/// to give it to. Nothing has reached the file then, since the document is complete before it is written.
void EnhancementsFile::writeThrough(utilities::FileLock& lock) const {
    try {
        write(lock.getStream());
    } catch (...) {
        return;
    }
}

std::unique_ptr<utilities::FileLock> EnhancementsFile::tryLock() {
    return utilities::FileLock::tryLock(filePath, true, utilities::FileLock::Access::ReadWrite);
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

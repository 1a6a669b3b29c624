#include "Annotate/Store.h"

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Utilities/FileLock.h"
#include "Xml/File.h"
#include "Xml/NodeList.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <functional>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace annotate {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using orv::utilities::FileLock;

namespace {

/// Keeps the parser's reason.
class ReasonKeeper : public orv::xml::errorhandler::ParseInterface {
public:
    void report(std::string_view message) override { reason = message; }

    std::string reason;
};

/// Tries again for up to a second until the attempt succeeds.
bool attempt(const std::function<bool()>& action) {
    for (int remaining = 100; remaining > 0; --remaining) {
        if (action()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return action();
}

StoreError lockFailure(const std::filesystem::path& path) {
    if (::access(path.c_str(), R_OK | W_OK) == 0) {
        return StoreError(path.string() + " is locked by another program. Try again when that is done.");
    }
    const std::string reason = std::generic_category().message(errno);
    return StoreError(path.string() + " can't be opened for writing (" + reason +
                      "). Mend that, or name another file with --store.");
}

std::unique_ptr<FileLock> lock(const std::filesystem::path& path, bool exclusive, FileLock::Access access) {
    std::unique_ptr<FileLock> held;
    if (!attempt([&] { return (held = FileLock::tryLock(path, exclusive, access)) != nullptr; })) {
        throw lockFailure(path);
    }
    return held;
}

/// The load writes, so a file that can't be written would look like one without notes.
void requireWritable(const std::filesystem::path& path) {
    const auto released = lock(path, true, FileLock::Access::ReadWrite);
}

bool isPresent(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return false;
    }
    if (status.type() == std::filesystem::file_type::none) {
        throw StoreError(path.string() + " can't be reached (" + error.message() + ").");
    }
    if (status.type() != std::filesystem::file_type::regular) {
        throw StoreError(path.string() + " isn't a file. Name a file with --store.");
    }
    return true;
}

Note noteOf(const orv::xml::const_Node& element) {
    std::vector<std::pair<std::string, std::string>> attributes;
    for (auto child = element.FirstChildGet(); child; child = child->NextSiblingGet()) {
        if (const auto text = child->FirstChildGet()) {
            attributes.emplace_back(child->getNodeName(), text->getNodeValue());
        }
    }
    Note note;
    note.setAttributes(attributes);
    return note;
}

/// The notes that the file holds now; none if it is missing or empty.
std::vector<Note> readNotes(const std::filesystem::path& path) {
    if (!isPresent(path) || std::filesystem::is_empty(path)) {
        return {};
    }
    const auto reading = lock(path, false, FileLock::Access::Read);
    orv::xml::File file(nullptr, orv::xml::VerboseLevel::Full);
    ReasonKeeper keeper;
    const auto root = file.parse(reading->getStream(), path.filename().string(), &keeper);
    if (!root || !root->boNodeNameIs("Enhancements")) {
        const std::string reason = root ? "its root element is " + root->getNodeName() : keeper.reason;
        throw StoreError(path.string() + " isn't a file of notes (" + reason +
                         "). Move it away, or name another file with --store.");
    }
    std::vector<Note> notes;
    const std::string kind = Note().getEntityName();
    for (auto node = root->FirstChildGet(); node; node = node->NextSiblingGet()) {
        if (node->boNodeNameIs(kind)) {
            notes.push_back(noteOf(*node));
        }
    }
    return notes;
}

} // namespace

Store::Store(std::filesystem::path storePath) : path(std::move(storePath)) {
    const std::vector<Note> stored = readNotes(path);
    if (isPresent(path)) {
        requireWritable(path);
    }
    Factory::registerClass(std::make_unique<Note>());
    EnhancementsFile::setFilePath(path);
    enhancements = Enhancements::getOrCreateEnhancementsDb();
    if (getNotes().size() != stored.size()) {
        throw StoreError(path.string() + " was changed by another program while it was read. Try again.");
    }
}

std::vector<const Note*> Store::getNotes() const {
    std::vector<const Note*> notes;
    for (const auto& record : enhancements->getRecords()) {
        if (const auto* note = dynamic_cast<const Note*>(record.get())) {
            notes.push_back(note);
        }
    }
    return notes;
}

void Store::add(const Note& note) {
    std::unique_ptr<EnhancementBase> record = std::make_unique<Note>(note);
    const bool taken = attempt([&] {
        Enhancements::addEnhancement(std::move(record));
        return record == nullptr;
    });
    if (!taken) {
        throw lockFailure(path);
    }
    const auto notes = getNotes();
    const auto expected = std::count_if(notes.begin(), notes.end(), [&](const Note* other) { return *other == note; });
    const auto stored = readNotes(path);
    if (std::count(stored.begin(), stored.end(), note) < expected) {
        throw StoreError("The note didn't get into " + path.string() +
                         ": the disk may be full, or another program wrote the file at the same time. Look at it "
                         "with the command notes, and try again.");
    }
}

} // namespace annotate

#include "Annotate/Store.h"

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
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

bool isWritable(const std::filesystem::path& path) {
    return ::access(path.c_str(), R_OK | W_OK) == 0;
}

StoreError lockFailure(const std::filesystem::path& path) {
    if (isWritable(path)) {
        return StoreError(path.string() + " is locked by another program. Try again when that is done.");
    }
    // Of a file that couldn't be made it is the directory that tells why.
    if (errno == ENOENT) {
        isWritable(std::filesystem::absolute(path).parent_path());
    }
    const std::string reason = std::generic_category().message(errno);
    return StoreError(path.string() + " can't be opened for writing (" + reason +
                      "). Mend that, or name another file with --store.");
}

/// Tries again for up to a second while another program has the file locked, and throws if it stays so.
void attempt(const std::filesystem::path& path, const std::function<bool()>& action) {
    for (int remaining = 100; !action(); --remaining) {
        if (remaining == 0 || !isWritable(path)) {
            throw lockFailure(path);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

std::unique_ptr<FileLock> lock(const std::filesystem::path& path, bool exclusive, FileLock::Access access) {
    std::unique_ptr<FileLock> held;
    attempt(path, [&] { return (held = FileLock::tryLock(path, exclusive, access)) != nullptr; });
    return held;
}

/// The load writes, so a file that can't be written would look like one without notes.
void requireWritable(const std::filesystem::path& path) {
    const auto released = lock(path, true, FileLock::Access::ReadWrite);
}

bool isPresent(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found && path.has_filename()) {
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

std::unique_ptr<FileLock> waitForTurn(const std::filesystem::path& model) {
    std::unique_ptr<FileLock> turn;
    for (int remaining = 1000; turn == nullptr && remaining > 0; --remaining) {
        turn = FileLock::tryLock(model, true, FileLock::Access::Read);
        if (turn == nullptr) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    return turn;
}

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
    attempt(path, [&] {
        Enhancements::addEnhancement(std::move(record));
        return record == nullptr;
    });
    const auto notes = getNotes();
    const auto expected = std::count_if(notes.begin(), notes.end(), [&](const Note* other) { return *other == note; });
    if (countStored(note) < expected) {
        throw StoreError("The note didn't get into " + path.string() +
                         ": the disk may be full, or another program wrote the file at the same time. Look at it "
                         "with the command notes, and try again.");
    }
}

/// How many such notes the file holds; none if it can't be read after a write that failed.
std::ptrdiff_t Store::countStored(const Note& note) const {
    try {
        const auto stored = readNotes(path);
        return std::count(stored.begin(), stored.end(), note);
    } catch (const StoreError&) {
        return 0;
    }
}

} // namespace annotate

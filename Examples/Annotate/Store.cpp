#include "Annotate/Store.h"

#include "Annotate/Note.h"
#include "Annotate/PropertyEdit.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Xml/File.h"
#include "Xml/NodeList.h"

#include <cerrno>
#include <chrono>
#include <functional>
#include <string>
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

/// The load writes, so a file that can't be written would look like one without records.
void requireWritable(const std::filesystem::path& path) {
    static_cast<void>(lock(path, true, FileLock::Access::ReadWrite)); // released at once
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

/// How many records of the registered kinds the file holds now; none if it is missing or empty.
std::size_t countRecords(const std::filesystem::path& path) {
    if (!isPresent(path) || std::filesystem::is_empty(path)) {
        return 0;
    }
    const auto reading = lock(path, false, FileLock::Access::Read);
    orv::xml::File file(nullptr, orv::xml::VerboseLevel::Full);
    ReasonKeeper keeper;
    const auto root = file.parse(reading->getStream(), path.filename().string(), &keeper);
    if (!root || !root->boNodeNameIs("Enhancements")) {
        const std::string reason = root ? "its root element is " + root->getNodeName() : keeper.reason;
        throw StoreError(path.string() + " isn't a file of users' additions (" + reason +
                         "). Move it away, or name another file with --store.");
    }
    std::size_t count = 0;
    for (auto node = root->FirstChildGet(); node; node = node->NextSiblingGet()) {
        count += Factory::createEntityFromName(node->getNodeName()) != nullptr ? 1U : 0U;
    }
    return count;
}

} // namespace

std::unique_ptr<FileLock> waitForTurn(const std::filesystem::path& model) {
    // Where an exclusive lock takes a file that is open for writing, as on NFS, a shared one can be had time and again.
    constexpr int enoughShared = 10;
    int sharedInARow = 0;
    for (int remaining = 6000; remaining > 0; --remaining) {
        if (auto turn = FileLock::tryLock(model, true, FileLock::Access::Read)) {
            return turn;
        }
        const bool isShared = FileLock::tryLock(model, false, FileLock::Access::Read) != nullptr;
        sharedInARow = isShared ? sharedInARow + 1 : 0;
        if (sharedInARow == enoughShared) {
            return nullptr;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw StoreError("Another annotate has been at work on " + model.string() + " for a minute. Try again later.");
}

Store::Store(std::filesystem::path storePath) : path(std::move(storePath)) {
    Factory::registerClass(std::make_unique<Note>());
    Factory::registerClass(std::make_unique<PropertyEdit>());
    const std::size_t stored = countRecords(path);
    if (isPresent(path)) {
        requireWritable(path);
    }
    EnhancementsFile::setFilePath(path);
    enhancements = Enhancements::getOrCreateEnhancementsDb();
    if (enhancements->getRecords().size() != stored) {
        throw StoreError(path.string() + " was changed by another program while it was read. Try again.");
    }
}

void Store::add(std::unique_ptr<EnhancementBase> record) {
    attempt(path, [&record] {
        Enhancements::addEnhancement(std::move(record));
        return record == nullptr;
    });
    if (countRecords(path) != enhancements->getRecords().size()) {
        throw StoreError(
            "It didn't get into " + path.string() +
            ": the disk may be full, or another program wrote the file at the same time. Look at it and try again.");
    }
}

} // namespace annotate

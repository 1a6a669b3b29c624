#include "Annotate/Store.h"

#include "Annotate/EarlierEdit.h"
#include "Annotate/LastCommand.h"
#include "Annotate/Note.h"
#include "Annotate/StoreError.h"
#include "Annotate/System.h"
#include "Annotate/Terminal.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Host/PropertyEdits.h"
#include "Host/ReadRecords.h"
#include "Utilities/FileLock.h"

#include <chrono>
#include <iostream>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace annotate {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using orv::host::ReadFailure;
using orv::utilities::FileLock;

namespace {

/// Why it can't be read and written; no error if it can.
std::errc refusalOf(const std::filesystem::path& path) {
    const std::errc reading = refusalOfReading(path);
    return reading == std::errc{} ? refusalOfWriting(path) : reading;
}

StoreError lockFailure(const std::filesystem::path& path) {
    std::errc refusal = refusalOf(path);
    if (refusal == std::errc{}) {
        return StoreError(path.string() + " is locked by another program. Try again when that is done.");
    }
    // Of a file that couldn't be made it is the directory that tells why.
    if (refusal == std::errc::no_such_file_or_directory) {
        const std::errc ofFolder = refusalOf(std::filesystem::absolute(path).parent_path());
        refusal = ofFolder == std::errc{} ? refusal : ofFolder;
    }
    return StoreError(path.string() + " can't be opened for writing (" + std::make_error_code(refusal).message() +
                      "). Mend that, or name another file with --store.");
}

StoreError noFile(const std::filesystem::path& path) {
    return StoreError(path.string() + " isn't a file. Name a file with --store.");
}

/// Waits up to a second for another program that has the file locked, and throws if it can't be locked then.
void requireLockable(const std::filesystem::path& path) {
    std::error_code error;
    for (int remaining = 100; !FileLock::tryLock(path, true, FileLock::Access::ReadWrite, error); --remaining) {
        if (error == std::errc::not_supported) {
            throw noFile(path);
        }
        if (remaining == 0 || refusalOf(path) != std::errc{}) {
            throw lockFailure(path);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
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
        throw noFile(path);
    }
    return true;
}

StoreError readFailure(const std::filesystem::path& path, const ReadFailure& failure) {
    if (failure.reason == ReadFailure::Reason::Unreadable) {
        return StoreError(path.string() + " can't be read (" + failure.detail + ").");
    }
    return StoreError(path.string() + " isn't a file of users' additions. " + failure.toString() +
                      " Move it away, or name another file with --store.");
}

template <typename... Kinds>
void registerKinds() {
    (Factory::registerClass(std::make_unique<Kinds>()), ...);
}

/// Throws if the file is missing and can't be made, as its folder is missing too.
void requireFolder(const std::filesystem::path& path) {
    const std::filesystem::path folder = path.parent_path();
    std::error_code error;
    if (!folder.empty() && !std::filesystem::exists(folder, error) && !error) {
        throw StoreError("There is no folder " + folder.string() + ". Check --store, or make the folder.");
    }
}

/// Once, as a command may read the store twice.
void remarkOnEmptyFile(const std::filesystem::path& path) {
    static bool isSaid = false;
    if (!std::exchange(isSaid, true)) {
        std::cerr << "annotate: " << printable(path.string())
                  << " is an empty file, and stands for no notes and edits. Another program may have cut it off.\n";
    }
}

/// A missing file holds none.
Records readRecordsOf(const std::filesystem::path& path) {
    registerKinds<Note, LastNoteNumber, LastCommand, EarlierEdit, orv::host::PropertyEdits>();
    if (!isPresent(path)) {
        return {};
    }
    orv::host::RecordsRead read = orv::host::readRecords(path);
    std::error_code ignored;
    if (std::filesystem::is_empty(path, ignored)) {
        remarkOnEmptyFile(path);
    } else if (read.failure) {
        throw readFailure(path, *read.failure);
    }
    return std::move(read.records);
}

} // namespace

void requireNamedStore(const Arguments& arguments) {
    if (!arguments.store.empty() && !isPresent(arguments.store)) {
        throw StoreError("There is no file " + arguments.store.string() +
                         ". Check --store; the commands that add something make the file.");
    }
}

Records readStore(const Arguments& arguments) {
    requireNamedStore(arguments);
    return readPresentRecords(arguments);
}

Records readPresentRecords(const Arguments& arguments) {
    return readRecordsOf(storePath(arguments));
}

Store::Store(std::filesystem::path storePath) : path(std::move(storePath)), turn(path) {
    requireFolder(path);
    const std::size_t stored = readRecordsOf(path).size();
    if (isPresent(path)) {
        requireLockable(path); // the load writes, so a file that can't be written would look like one without records
    }
    EnhancementsFile::setFilePath(path);
    Enhancements::loadAtOnce();
    if (getRecords().size() != stored) {
        throw StoreError(path.string() + " was changed by another program while it was read. Try again.");
    }
}

const Records& Store::getRecords() {
    return Enhancements::getOrCreateEnhancementsDb()->getRecords();
}

void Store::write(const std::vector<const EnhancementBase*>& removed) {
    const auto change = [&] {
        const bool hasAdditions = !added.empty();
        if (hasAdditions && !Enhancements::addEnhancements(added)) {
            return false;
        }
        return removed.empty() ? hasAdditions || Enhancements::saveChanges()
                               : !Enhancements::takeRecords(removed).empty();
    };
    if (change()) {
        return;
    }
    requireLockable(path);
    if (!change()) {
        throw StoreError("It didn't get into " + path.string() +
                         ": the disk may be full, or another program has the file. Look at it and try again.");
    }
}

void Store::tidy(const std::vector<const EnhancementBase*>& records) {
    if (!records.empty()) {
        static_cast<void>(Enhancements::takeRecords(records));
    }
}

} // namespace annotate

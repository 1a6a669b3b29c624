#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"

#include "Assert/Assert.h"
#include "Assert/UntilUnload.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsState.h"
#include "Utilities/Descriptor.h"
#include "Utilities/LockedFile.h"
#include "Utilities/ScopeGuard.h"
#include "Xml/Outline.h"

#include <ostream>
#include <system_error>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using FilePath = UntilUnload<std::filesystem::path>;

constexpr std::string_view lockFileName =
    "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::lockFile";
constexpr std::string_view writeFileName =
    "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::writeFile";
constexpr std::string_view writeName = "orv::domain::shared::enhancementsforreferencemodel::EnhancementsFile::write";

} // namespace

void EnhancementsFile::report(std::string_view message, std::string_view operation, std::uint32_t line) {
    constexpr std::string_view sourcePath = "Source/Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile";
    assert::Assert::addAssert({0, message, operation, sourcePath, line});
}

void EnhancementsFile::setFilePath(std::filesystem::path path) {
    if (auto* const filePath = FilePath::get()) {
        *filePath = std::move(path);
    }
}

std::filesystem::path EnhancementsFile::getFilePath() {
    const auto* const filePath = FilePath::get();
    return filePath == nullptr ? std::filesystem::path() : *filePath;
}

EnhancementsFile::EnhancementsFile(const Enhancements& database) : enhancementsDb(database) {}

EnhancementsFile::~EnhancementsFile() {
    if (fileLock) {
        writeFile();
    }
}

bool EnhancementsFile::lockFile() {
    if (assert::Assert::isEnabled() && fileLock) {
        report("File is already locked", lockFileName, 24);
    }
    std::error_code error;
    fileLock = lockAndProtect(error);
    if (error == std::errc::no_such_file_or_directory) {
        createFile();
        fileLock = lockAndProtect(error);
    }
    return fileLock != nullptr;
}

void EnhancementsFile::writeFile() {
    if (!fileLock) {
        std::error_code ignored;
        fileLock = lockAndProtect(ignored);
    }
    if (assert::Assert::isEnabled() && !fileLock) {
        report("Not able to lock file before writing", writeFileName, 53);
    }
    if (fileLock) {
        writeThrough(*fileLock, present);
    }
}

bool EnhancementsFile::save() {
    const auto file = std::exchange(fileLock, nullptr);
    return writeThrough(*file, present);
}

bool EnhancementsFile::write(std::ostream& stream) const {
    if (assert::Assert::isEnabled() && !stream.good()) {
        report("Stream must be open", writeName, 108);
    }
    RecordDocument& document = enhancementsDb.state->document;
    if (!stream.good() || !document.render()) {
        return false;
    }
    const ScopeGuard end([&document] { document.discard(); }); // also if the stream throws
    const std::string_view text = document.getDocumentText().getDraft();
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    return stream.good();
}

/// Makes the directories and the file with its first document. That happens under the file's lock as well, so
/// that no two processes write the first document over each other.
void EnhancementsFile::createFile() const {
    utilities::makeDirectories(getFilePath().parent_path());
    std::error_code ignored;
    if (const auto newFile = utilities::LockedFile::tryLockNew(getFilePath(), ignored)) {
        writeThrough(*newFile, "");
    }
}

/// Takes the lock, unless the file holds something that this process doesn't know and that can't be kept.
std::unique_ptr<utilities::LockedFile> EnhancementsFile::lockAndProtect(std::error_code& error) {
    auto file = utilities::LockedFile::tryLock(getFilePath(), true, utilities::LockedFile::Access::ReadWrite, error,
                                               &enhancementsDb.state->loadNote);
    return file && protect(*file) ? std::move(file) : nullptr;
}

/// Reads the file if it isn't known to hold the accepted document, and takes over or copies what this process doesn't
/// know. Returns false if that fails: a write would lose it.
bool EnhancementsFile::protect(const utilities::LockedFile& file) {
    KnownFiles& knownFiles = enhancementsDb.state->knownFiles;
    const utilities::Digest& accepted = enhancementsDb.state->document.getDocumentText().getAcceptedDigest();
    const KnownFile* const current = knownFiles.getCurrent();
    const KnownFile* const known = knownFiles.find(file.getPath());
    // False after a merge whose document couldn't be written.
    const bool isWritten = current != nullptr && current->content == accepted;
    present.reset();
    if (isWritten && known != nullptr && known->state && known->state == file.getState() &&
        known->content == accepted) {
        return true;
    }
    present = file.read();
    if (!present || present->empty()) {
        return present.has_value();
    }
    const auto digest = utilities::Digest::of(*present);
    if (isWritten && digest == accepted) {
        present.reset();
        return true;
    }
    const KnownFile* const before = knownFiles.findContent(digest);
    if (before != nullptr && before == current) {
        return true; // what is being loaded, or what was taken over
    }
    const KnownFile* const source = before != nullptr ? before : known;
    return (source != nullptr && merge(file, digest, *source)) || file.keep(*present);
}

/// Takes over what another program has made of the file since this process read or wrote it, and keeps a copy if a
/// record has gone or changed there. Returns false if it is no document of records, or the copy can't be made.
bool EnhancementsFile::merge(const utilities::LockedFile& file, const utilities::Digest& digest,
                             const KnownFile& known) {
    auto& [document, knownFiles, loadNote] = *enhancementsDb.state;
    const auto outline = xml::Outline::parse(*present);
    if (!outline || outline->getRootName() != RecordDocument::rootName) {
        return false;
    }
    const bool isCurrent = &known == knownFiles.getCurrent();
    auto merged = document.compare(*outline, isCurrent ? document.getElements() : known.elements);
    if (!merged.isComplete && !file.keep(*present)) {
        return false;
    }
    knownFiles.prepare(file.getPath());
    noteFormerElements(file);
    document.apply(std::move(merged));
    knownFiles.setCurrent({std::nullopt, digest, {}});
    return true;
}

/// Writes the database through the lock over that content or, without one, the accepted document. Returns whether it is
/// on the disk or, in a load, in the file. An exception, of a kind's operations or for want of memory, goes no further:
/// the end of a guard has no caller for it. Nothing is written then.
bool EnhancementsFile::writeThrough(utilities::LockedFile& file, const std::optional<std::string>& content) const {
    RecordDocument& document = enhancementsDb.state->document;
    try {
        const bool addsNothing = document.addsNothing();
        enhancementsDb.state->knownFiles.prepare(file.getPath());
        noteFormerElements(file);
        if (!document.render()) {
            return false;
        }
        const ScopeGuard end([&document] { document.discard(); }); // unless it is accepted
        return keepAlteredTexts(file, content) && replace(file, content, addsNothing);
    } catch (...) {
        return false;
    }
}

/// Replaces the content by the draft.
bool EnhancementsFile::replace(utilities::LockedFile& file, const std::optional<std::string>& content,
                               bool addsNothing) const {
    auto& [document, knownFiles, loadNote] = *enhancementsDb.state;
    const DocumentText& text = document.getDocumentText();
    auto replacement = text.getReplacement();
    if (content) {
        replacement.change = utilities::Change::between(*content, replacement.content);
        replacement.sizeBefore = content->size();
        replacement.digestBefore = utilities::Digest::of(*content);
    }
    const KnownFile* const known = knownFiles.find(file.getPath());
    bool isReplaced = false;
    if (addsNothing) {
        isReplaced =
            file.replaceInSeries([&] { return content ? *content : text.getFormerText(); }, replacement, loadNote);
    } else {
        file.endSeries(loadNote);
        isReplaced = file.replace(replacement);
    }
    if (isReplaced) {
        const auto& state = file.getState();
        const bool isSure =
            !replacement.change.isNone() || (state && (state->isOld() || (known != nullptr && known->state == state)));
        rememberContent(isSure ? state : std::nullopt);
    }
    return isReplaced;
}

/// Makes sure that texts which the document holds and records return as others are in a copy.
bool EnhancementsFile::keepAlteredTexts(const utilities::LockedFile& file,
                                        const std::optional<std::string>& content) const {
    RecordDocument& document = enhancementsDb.state->document;
    if (document.altersTexts()) {
        const auto loaded = document.getLoaded();
        if (!file.keep(loaded ? *loaded : content ? *content : document.getDocumentText().getFormerText())) {
            return false;
        }
        document.forgetAlteration();
    }
    return true;
}

/// Notes the elements of the accepted document's file, if that is another one: from now on the document tells those of
/// this file.
void EnhancementsFile::noteFormerElements(const utilities::LockedFile& file) const {
    auto& [document, knownFiles, loadNote] = *enhancementsDb.state;
    KnownFile* const former = knownFiles.getCurrent();
    if (former != nullptr && former != knownFiles.find(file.getPath())) {
        former->elements = document.getElements();
    }
}

/// The file holds the draft, in that state if it is sure that another content makes another state. Nothing can fail any
/// more.
void EnhancementsFile::rememberContent(const std::optional<utilities::FileState>& state) const {
    auto& [document, knownFiles, loadNote] = *enhancementsDb.state;
    document.accept();
    knownFiles.setCurrent({state, document.getDocumentText().getAcceptedDigest(), {}});
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

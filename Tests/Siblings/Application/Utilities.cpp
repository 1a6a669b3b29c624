#include "Utilities/Beside.h"
#include "Utilities/Descriptor.h"
#include "Utilities/DocumentReading.h"
#include "Utilities/LockedFile.h"
#include "Utilities/StreamContent.h"

#include <functional>
#include <iterator>
#include <sstream>

namespace orv::utilities {

std::map<std::filesystem::path, std::string> LockedFile::documents;

std::unique_ptr<LockedFile> LockedFile::tryLock(const std::filesystem::path& path, bool /*exclusive*/,
                                                Access /*access*/, std::error_code& error,
                                                const SavingNote* /*series*/) {
    error = documents.contains(path) ? std::error_code() : make_error_code(std::errc::no_such_file_or_directory);
    return error ? nullptr : std::unique_ptr<LockedFile>(new LockedFile(path));
}

std::unique_ptr<LockedFile> LockedFile::tryLockNew(const std::filesystem::path& path, std::error_code& error) {
    documents[path] = "";
    return tryLock(path, true, Access::ReadWrite, error);
}

bool LockedFile::replace(const Replacement& replacement) {
    documents[path] = replacement.content;
    return true;
}

std::optional<DocumentReading> readDocument(const std::filesystem::path& path, std::error_code& error) {
    const auto file = LockedFile::tryLock(path, false, LockedFile::Access::Read, error);
    return file ? std::optional(DocumentReading{*file->read(), {}, path}) : std::nullopt;
}

std::optional<std::string> contentOf(std::istream& stream) {
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

Change Change::between(std::string_view content, std::string_view other) {
    return content == other ? Change() : Change{0, content, other};
}

Digest Digest::of(std::string_view content) {
    return {std::hash<std::string_view>()(content), content.size()};
}

void RunningDigest::update(std::string_view content, std::size_t /*unchanged*/) {
    digest = Digest::of(content);
}

bool FileState::isOld() const {
    return false;
}

std::filesystem::path resolved(std::filesystem::path path) {
    return path;
}

void makeDirectories(const std::filesystem::path& /*directory*/) {}

} // namespace orv::utilities

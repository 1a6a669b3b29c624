#include "Domain/Shared/EnhancementsForReferenceModel/KnownFiles.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace orv::domain::shared::enhancementsforreferencemodel {

const KnownFiles::Key& KnownFiles::keyOf(const std::filesystem::path& path) {
    if (!path.is_absolute() || path.native() != lastPath.native()) {
        std::error_code ignored;
        auto asked = path;
        lastKey = (path.is_absolute() ? path : std::filesystem::absolute(path, ignored)).lexically_normal().native();
        lastPath.swap(asked);
    }
    return lastKey;
}

KnownFile* KnownFiles::find(const std::filesystem::path& path) {
    const auto known = files.find(keyOf(path));
    return known == files.end() ? nullptr : &known->second;
}

void KnownFiles::prepare(const std::filesystem::path& path) {
    Files room;
    room.try_emplace(keyOf(path));
    prepared = room.extract(room.begin());
}

void KnownFiles::setCurrent(KnownFile file) {
    current = &files.insert(std::move(prepared)).position->second;
    *current = std::move(file);
}

void KnownFiles::setForeign(const std::filesystem::path& path) {
    files.try_emplace(keyOf(path), KnownFile{std::nullopt, utilities::Digest::of(""), {}});
}

const KnownFile* KnownFiles::findContent(const utilities::Digest& content) const {
    const auto found =
        std::find_if(files.begin(), files.end(), [&](const auto& file) { return file.second.content == content; });
    return found == files.end() ? nullptr : &found->second;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

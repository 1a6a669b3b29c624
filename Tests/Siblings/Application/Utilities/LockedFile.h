#pragma once

#include "Utilities/Change.h"
#include "Utilities/FileState.h"
#include "Utilities/SavingNote.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

namespace orv::utilities {

/// A document that is kept in memory under the path that a file would have.
class LockedFile {
public:
    enum class Access { Read, ReadWrite };

    static std::unique_ptr<LockedFile> tryLock(const std::filesystem::path& path, bool exclusive, Access access,
                                               std::error_code& error, const SavingNote* series = nullptr);
    static std::unique_ptr<LockedFile> tryLockNew(const std::filesystem::path& path, std::error_code& error);

    static std::optional<FileState> getState() { return std::nullopt; }
    const std::filesystem::path& getPath() const { return path; }
    std::optional<std::string> read() const { return documents[path]; }
    static bool keep(std::string_view /*content*/) { return true; }
    bool replace(const Replacement& replacement);
    bool replaceInSeries(const std::function<std::string()>& /*getContent*/, const Replacement& replacement,
                         SavingNote& /*series*/) {
        return replace(replacement);
    }
    static void endSeries(SavingNote& /*series*/) {}

    static std::map<std::filesystem::path, std::string> documents;

private:
    explicit LockedFile(std::filesystem::path key) : path(std::move(key)) {}

    std::filesystem::path path;
};

} // namespace orv::utilities

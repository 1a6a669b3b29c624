#include "Utilities/KeptCopy.h"

#include "Utilities/SystemCalls.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <vector>

namespace orv::utilities {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t chunkSize = 1 << 16;
constexpr const char* keptMark = ".kept-";

/// Hands the content on, piece by piece with its position, for as long as the consumer gives true.
template <typename Consumer>
bool forEachPiece(const OpenFile& file, Consumer consume) {
    std::vector<char> buffer(chunkSize);
    for (std::uint64_t position = 0;;) {
        const auto size = file.read(buffer.data(), buffer.size(), position);
        if (!size || !consume(std::string_view(buffer.data(), *size), position)) {
            return false;
        }
        if (*size < buffer.size()) {
            return true;
        }
        position += *size;
    }
}

/// Whether the path is another file of the same content. A link to the file itself is no copy.
bool isCopy(const fs::path& path, const OpenFile& file, const FileState& state) {
    const OwnedFile copy(path, O_RDONLY | O_NOFOLLOW);
    const auto copyState = copy.isOpen() ? copy.getState() : std::nullopt;
    if (!copyState || copyState->size != state.size || copyState->identity == state.identity) {
        return false;
    }
    std::string buffer(chunkSize, '\0');
    return forEachPiece(file, [&](std::string_view piece, std::uint64_t position) {
        return copy.read(buffer.data(), piece.size(), position) == piece.size() && buffer.starts_with(piece);
    });
}

/// Whether a kept copy beside the path is one of the file's present content; nothing if that can't be told.
std::optional<bool> isKept(const OpenFile& file, const fs::path& path) {
    const auto state = file.getState();
    const std::string beginning = path.filename().native() + keptMark;
    std::error_code error;
    fs::directory_iterator entry(path.parent_path(), error);
    for (; state && !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (entry->path().filename().native().starts_with(beginning) && isCopy(entry->path(), file, *state)) {
            return true;
        }
    }
    return state && !error ? std::optional(false) : std::nullopt;
}

std::string utcTime(std::chrono::system_clock::time_point time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const auto microseconds = std::chrono::floor<std::chrono::microseconds>(time - seconds);
    const std::time_t calendarTime = std::chrono::system_clock::to_time_t(seconds);
    std::tm parts{};
    ::gmtime_r(&calendarTime, &parts);
    std::array<char, 16> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%dT%H%M%S", &parts);
    const std::string fraction = std::to_string(1'000'000 + microseconds.count()).substr(1);
    return std::string(text.data(), length) + "." + fraction + "Z";
}

/// A path that begins like that and that no file has.
fs::path unusedPath(const std::string& beginning) {
    auto time = std::chrono::system_clock::now();
    fs::path path;
    std::error_code ignored;
    do {
        path = beginning + utcTime(time);
        time += std::chrono::microseconds(1);
    } while (fs::exists(path, ignored));
    return path;
}

bool makeCopy(const OpenFile& file, const fs::path& path, fs::perms permissions) {
    const fs::path unfinished = unusedPath(path.native() + ".keeping-");
    const OwnedFile copy(unfinished, O_WRONLY | O_CREAT | O_EXCL, static_cast<unsigned>(permissions));
    if (!copy.isOpen()) {
        return false;
    }
    const bool isDone = forEachPiece(file, [&](auto piece, auto position) { return copy.write(piece, position); }) &&
                        copy.sync() &&
                        systemCalls.rename(unfinished.c_str(), unusedPath(path.native() + keptMark).c_str()) == 0;
    if (!isDone) {
        std::error_code ignored;
        fs::remove(unfinished, ignored);
    }
    return isDone;
}

} // namespace

bool keepCopy(const OpenFile& file, const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const fs::perms permissions = fs::status(path, error).permissions() & fs::perms::all;
    const OwnedFile directory(absolute.parent_path(), O_RDONLY | O_DIRECTORY);
    const auto kept = error || !directory.isOpen() ? std::nullopt : isKept(file, absolute);
    if (!kept || (!*kept && !makeCopy(file, absolute, permissions))) {
        return false;
    }
    // Some file systems have nothing to sync of a directory and say so with EINVAL.
    return directory.sync() || errno == EINVAL;
}

} // namespace orv::utilities

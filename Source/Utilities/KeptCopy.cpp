#include "Utilities/KeptCopy.h"

#include "Utilities/Beside.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orv::utilities {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view keptMark = ".kept-";
constexpr std::string_view unfinishedMark = ".keeping-";
constexpr std::string_view exampleTime = "20261122T184501.250000Z";

/// With zeros ahead of it, as many as it takes.
std::string padded(std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::string utcTime(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(floor<microseconds>(time - day));
    return padded(static_cast<int>(date.year()), 4) + padded(static_cast<unsigned>(date.month()), 2) +
           padded(static_cast<unsigned>(date.day()), 2) + "T" + padded(clock.hours().count(), 2) +
           padded(clock.minutes().count(), 2) + padded(clock.seconds().count(), 2) + "." +
           padded(clock.subseconds().count(), 6) + "Z";
}

/// What the names of copies, or of those under way, begin with.
fs::path beginningOf(const fs::path& path, std::string_view mark) {
    return beside(path, mark, exampleTime.size() + unfinishedMark.size() - mark.size());
}

fs::path unusedPath(const fs::path& path, std::string_view mark) {
    const fs::path beginning = beginningOf(path, mark);
    fs::path unused;
    auto time = std::chrono::system_clock::now();
    do {
        unused = beginning;
        unused += utcTime(time);
        time += std::chrono::microseconds(1);
    } while (utilities::exists(unused));
    return unused;
}

bool isCopy(const fs::path& path, const FileState& state, std::string_view content) {
    const auto copy = Descriptor::open(path, Opening::ReadNoLink);
    const auto copyState = copy.isOpen() ? copy.getState() : std::nullopt;
    return copyState && copyState->size == content.size() && copyState->identity != state.identity &&
           copy.read() == content;
}

/// Nothing if that can't be told.
std::optional<bool> isKept(const fs::path& path, const FileState& state, std::string_view content) {
    std::vector<fs::path> names;
    if (uninterrupted([&] { return systemCalls.list(path.parent_path(), names); }) != done) {
        return std::nullopt;
    }
    const fs::path::string_type beginning = beginningOf(path, keptMark).filename().native();
    return std::any_of(names.begin(), names.end(), [&](const fs::path& name) {
        return name.native().starts_with(beginning) && isCopy(path.parent_path() / name, state, content);
    });
}

bool makeCopy(const Descriptor& file, const fs::path& path, std::string_view content) {
    const fs::path unfinished = unusedPath(path, unfinishedMark);
    const auto copy = Descriptor::open(unfinished, Opening::MakeNew);
    if (!copy.isOpen()) {
        return false;
    }
    copy.takeAccess(file); // or its owner alone may read it
    const bool isDone =
        copy.write(content, 0) == done && copy.sync() == done && renameFile(unfinished, unusedCopyPath(path)) == done;
    if (!isDone) {
        removeFile(unfinished);
    }
    return isDone;
}

} // namespace

bool keepCopy(const Descriptor& file, const fs::path& path, std::string_view content) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const auto state = error ? std::nullopt : file.getState();
    const auto kept = state ? isKept(absolute, *state, content) : std::nullopt;
    return kept && (*kept || makeCopy(file, absolute, content)) && syncDirectory(absolute.parent_path()) == done;
}

fs::path unusedCopyPath(const fs::path& path) {
    return unusedPath(path, keptMark);
}

} // namespace orv::utilities

#include "Utilities/FileState.h"

#include "Utilities/SystemCalls.h"

#include <algorithm>
#include <chrono>

namespace orv::utilities {

bool FileState::isOld() const {
    using namespace std::chrono;
    const bool areTimesExact = changeTime % nanoseconds(1ms).count() != 0;
    const auto age = system_clock::now().time_since_epoch() - nanoseconds(std::max(changeTime, modificationTime));
    return age > (areTimesExact ? milliseconds(50) : milliseconds(3000));
}

std::optional<FileState> FileState::of(const std::filesystem::path& path) {
    FileState state;
    const std::errc outcome = uninterrupted([&] { return systemCalls.getStateOf(path, state); });
    return outcome == done ? std::optional(state) : std::nullopt;
}

} // namespace orv::utilities

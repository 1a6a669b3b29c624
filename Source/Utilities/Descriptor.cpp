#include "Utilities/Descriptor.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orv::utilities {

namespace fs = std::filesystem;

Descriptor Descriptor::open(const fs::path& path, Opening opening, std::errc& outcome) {
    Descriptor opened;
    outcome = uninterrupted([&] { return systemCalls.open(path, opening, opened.handle); });
    return opened;
}

Descriptor Descriptor::open(const fs::path& path, Opening opening) {
    std::errc ignored{};
    return open(path, opening, ignored);
}

Descriptor::Descriptor(Descriptor&& other) noexcept : handle(std::exchange(other.handle, Handle::None)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(handle, other.handle);
    return *this;
}

Descriptor::~Descriptor() {
    if (isOpen()) {
        systemCalls.close(handle);
    }
}

std::errc Descriptor::lock(bool exclusive) const {
    return uninterrupted([&] { return systemCalls.lock(handle, exclusive); });
}

void Descriptor::unlock() const {
    uninterrupted([&] { return systemCalls.unlock(handle); });
}

std::optional<FileState> Descriptor::getState() const {
    FileState state;
    return uninterrupted([&] { return systemCalls.getState(handle, state); }) == done ? std::optional(state)
                                                                                      : std::nullopt;
}

std::optional<std::string> Descriptor::read() const {
    constexpr std::size_t minimum = 4096;
    const auto state = getState();
    if (!state) {
        return std::nullopt;
    }
    std::string content;
    std::size_t filled = 0;
    for (std::size_t read = 1; read != 0; filled += read) {
        if (filled == content.size()) {
            // One byte more than is expected, so that the end is seen at once.
            content.resize(std::max({filled + filled / 2, static_cast<std::size_t>(state->size) + 1, minimum}));
        }
        const std::errc outcome = uninterrupted(
            [&] { return systemCalls.readAt(handle, content.data() + filled, content.size() - filled, filled, read); });
        if (outcome != done) {
            return std::nullopt;
        }
    }
    content.resize(filled);
    return content;
}

std::errc Descriptor::write(std::string_view content, std::uint64_t position) const {
    while (!content.empty()) {
        std::size_t written = 0;
        const std::errc outcome =
            uninterrupted([&] { return systemCalls.writeAt(handle, content, position, written); });
        if (outcome != done || written == 0) {
            return outcome != done ? outcome : std::errc::io_error;
        }
        content.remove_prefix(written);
        position += written;
    }
    return done;
}

std::errc Descriptor::setSize(std::uint64_t size) const {
    return uninterrupted([&] { return systemCalls.setSize(handle, size); });
}

std::errc Descriptor::setModificationTime(std::int64_t time) const {
    return uninterrupted([&] { return systemCalls.setModificationTime(handle, time); });
}

std::errc Descriptor::takeAccess(const Descriptor& model) const {
    return uninterrupted([&] { return systemCalls.takeAccess(handle, model.handle); });
}

std::errc Descriptor::sync() const {
    return uninterrupted([&] { return systemCalls.sync(handle); });
}

bool exists(const fs::path& path) {
    FileState ignored;
    const std::errc outcome = uninterrupted([&] { return systemCalls.getStateOf(path, ignored); });
    return outcome == done || outcome == std::errc::is_a_directory || outcome == std::errc::not_supported;
}

std::errc renameFile(const fs::path& from, const fs::path& to) {
    return uninterrupted([&] { return systemCalls.rename(from, to); });
}

std::errc removeFile(const fs::path& path) {
    return uninterrupted([&] { return systemCalls.remove(path); });
}

std::errc syncDirectory(const fs::path& directory) {
    std::errc outcome{};
    const auto opened = Descriptor::open(directory.empty() ? "." : directory, Opening::Directory, outcome);
    return opened.isOpen() ? opened.sync() : outcome;
}

void makeDirectories(const fs::path& directory) {
    std::vector<fs::path> missing;
    for (fs::path level = directory; !level.empty() && !utilities::exists(level); level = level.parent_path()) {
        missing.push_back(level);
    }
    std::for_each(missing.rbegin(), missing.rend(), [](const fs::path& level) {
        uninterrupted([&] { return systemCalls.makeDirectory(level); });
        syncDirectory(level.parent_path());
    });
    syncDirectory(directory);
}

} // namespace orv::utilities

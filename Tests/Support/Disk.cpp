#include "Support/Disk.h"

#include "Support/TemporaryDirectory.h"

#include <algorithm>

namespace orv::tests {

namespace fs = std::filesystem;
using utilities::done;
using utilities::Handle;
using utilities::Opening;
using utilities::SystemCalls;
using utilities::systemCalls;

namespace {

constexpr std::size_t sectorSize = 512;

Disk* disk = nullptr;
SystemCalls real{};

std::string parentOf(const std::string& path) {
    return fs::path(path).parent_path().generic_string();
}

} // namespace

/// The operations in the place of those of the platform, which they call.
struct DiskCalls {
    static std::errc open(const fs::path& path, Opening opening, Handle& opened) {
        const bool isThere = fs::exists(path);
        const std::errc outcome = real.open(path, opening, opened);
        if (outcome != done) {
            return outcome;
        }
        if (opening == Opening::Directory) {
            disk->openDirectories[opened] = disk->relative(path);
            return outcome;
        }
        if (!isThere) {
            disk->files.emplace_back();
            disk->name({}, path, static_cast<int>(disk->files.size()) - 1);
        }
        disk->openFiles[opened] = disk->names.at(disk->relative(path));
        return outcome;
    }
    static void close(Handle file) {
        disk->openFiles.erase(file);
        disk->openDirectories.erase(file);
        real.close(file);
    }
    static std::errc writeAt(Handle file, std::string_view content, std::uint64_t position, std::size_t& written) {
        const std::errc outcome = real.writeAt(file, content, position, written);
        disk->change(file, [&](std::string& present) {
            present.resize(std::max<std::size_t>(present.size(), position + written));
            present.replace(position, written, content.substr(0, written));
        });
        return outcome;
    }
    static std::errc setSize(Handle file, std::uint64_t size) {
        disk->change(file, [&](std::string& present) { present.resize(size); });
        return real.setSize(file, size);
    }
    static std::errc sync(Handle file) {
        if (const auto directory = disk->openDirectories.find(file); directory != disk->openDirectories.end()) {
            for (const auto& [removed, made, number] : disk->laterNames[directory->second]) {
                disk->syncedNames.erase(removed);
                if (!made.empty()) {
                    disk->syncedNames[made] = number;
                }
            }
            disk->laterNames.erase(directory->second);
        } else {
            Disk::File& synced = disk->files.at(static_cast<std::size_t>(disk->openFiles.at(file)));
            synced.synced = synced.present();
            synced.later.clear();
        }
        disk->afterEach(*disk);
        return done; // which the disk of the machine needn't
    }
    static std::errc rename(const fs::path& from, const fs::path& to) {
        disk->name(from, to, disk->names.at(disk->relative(from)));
        return real.rename(from, to);
    }
    static std::errc remove(const fs::path& path) {
        disk->name(path, {}, 0);
        return real.remove(path);
    }
    static std::errc makeDirectory(const fs::path& path) {
        disk->name({}, path, Disk::directory);
        return real.makeDirectory(path);
    }
};

Disk::Disk(fs::path top, std::function<void(const Disk&)> callback)
    : root(std::move(top)), afterEach(std::move(callback)) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_directory()) {
            names[relative(entry.path())] = directory;
        } else {
            names[relative(entry.path())] = static_cast<int>(files.size());
            files.push_back({contentOf(entry.path()), {}});
        }
    }
    syncedNames = names;
    disk = this;
    real = systemCalls;
    systemCalls.open = DiskCalls::open;
    systemCalls.close = DiskCalls::close;
    systemCalls.writeAt = DiskCalls::writeAt;
    systemCalls.setSize = DiskCalls::setSize;
    systemCalls.sync = DiskCalls::sync;
    systemCalls.rename = DiskCalls::rename;
    systemCalls.remove = DiskCalls::remove;
    systemCalls.makeDirectory = DiskCalls::makeDirectory;
}

Disk::~Disk() {
    systemCalls = real;
}

std::set<Disk::State> Disk::states(std::mt19937_64& dice, std::size_t maximum) const {
    // Counts through all choices: the digits are those that were made last, each below its base.
    std::vector<std::pair<std::size_t, std::size_t>> digits;
    std::set<State> found;
    for (std::size_t tried = 0; tried < maximum; ++tried) {
        std::size_t next = 0;
        found.insert(stateBy([&](std::size_t count) {
            if (next == digits.size()) {
                digits.emplace_back(0, count);
            }
            return digits[next++].first;
        }));
        while (!digits.empty() && digits.back().first + 1 == digits.back().second) {
            digits.pop_back();
        }
        if (digits.empty()) {
            return found;
        }
        ++digits.back().first;
    }
    found.clear();
    for (std::size_t tried = 0; tried < maximum; ++tried) {
        // Mostly all or nothing of a file: a choice of each sector alone would hardly ever leave much of it.
        const std::size_t habit = dice() % 4;
        found.insert(stateBy([&](std::size_t count) {
            return habit == 0 ? 0 : habit == 1 ? count - 1 : static_cast<std::size_t>(dice() % count);
        }));
    }
    return found;
}

Disk::State Disk::stateBy(const Choose& choose) const {
    Names landed = syncedNames;
    for (const auto& [directoryPath, namings] : laterNames) {
        const std::size_t count = choose(namings.size() + 1);
        for (std::size_t number = 0; number < count; ++number) {
            landed.erase(namings[number].removed);
            if (!namings[number].made.empty()) {
                landed[namings[number].made] = namings[number].file;
            }
        }
    }
    State state;
    for (const auto& [path, number] : landed) {
        bool isReached = true; // the names above it have landed
        for (std::string above = parentOf(path); !above.empty(); above = parentOf(above)) {
            isReached = isReached && landed.contains(above);
        }
        if (isReached && number == directory) {
            state[path + '/'] = {};
        } else if (isReached) {
            state[path] = contentBy(files.at(static_cast<std::size_t>(number)), choose);
        }
    }
    return state;
}

std::string Disk::contentBy(const File& file, const Choose& choose) const {
    if (file.later.empty()) {
        return file.synced;
    }
    const auto version = [&](std::size_t number) -> const std::string& {
        return number == 0 ? file.synced : file.later[number - 1];
    };
    const auto sector = [&](std::size_t number, std::size_t begin) {
        const std::string& content = version(number);
        std::string bytes = begin < content.size() ? content.substr(begin, sectorSize) : std::string();
        bytes.resize(sectorSize);
        return bytes;
    };
    const std::size_t versions = file.later.size() + 1;
    const std::size_t size = version(choose(versions)).size();
    std::string content;
    for (std::size_t begin = 0; begin < size; begin += sectorSize) {
        std::vector<std::string> contents; // that this sector had
        for (std::size_t number = 0; number < versions; ++number) {
            std::string bytes = sector(number, begin);
            if (std::find(contents.begin(), contents.end(), bytes) == contents.end()) {
                contents.push_back(std::move(bytes));
            }
        }
        content += contents[contents.size() == 1 ? 0 : choose(contents.size())];
    }
    content.resize(size);
    return content;
}

std::string Disk::relative(const fs::path& path) const {
    const std::string below = path.lexically_normal().lexically_relative(root).generic_string();
    return below == "." ? std::string() : below;
}

void Disk::name(const fs::path& removed, const fs::path& made, int file) {
    const Naming naming{removed.empty() ? std::string() : relative(removed),
                        made.empty() ? std::string() : relative(made), file};
    names.erase(naming.removed);
    if (!naming.made.empty()) {
        names[naming.made] = file;
    }
    laterNames[parentOf(naming.made.empty() ? naming.removed : naming.made)].push_back(naming);
    afterEach(*this);
}

void Disk::change(Handle file, const std::function<void(std::string&)>& operation) {
    File& changed = files.at(static_cast<std::size_t>(openFiles.at(file)));
    std::string content = changed.present();
    operation(content);
    changed.later.push_back(std::move(content));
    afterEach(*this);
}

} // namespace orv::tests

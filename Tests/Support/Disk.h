#pragma once

#include "Utilities/SystemCalls.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace orv::tests {

/// What would be on the disk if the power failed, told from all that the library does to files below a directory for as
/// long as the object lives. One at a time.
///
/// Data that wasn't synced has landed in any of its sectors or in none, in any version that it had since the last sync;
/// so has the size, and sectors behind the old size that didn't land are zeros. Names that were made, changed or
/// removed since their directory was synced have changed up to any of these steps, in their order.
class Disk {
public:
    /// All that is below the top is on the disk. Calls back after each operation.
    Disk(std::filesystem::path top, std::function<void(const Disk&)> callback);
    ~Disk();

    Disk(const Disk&) = delete;
    Disk& operator=(const Disk&) = delete;

    /// The contents of files by their paths, relative to the top. Directories have no entry, but for empty ones, which
    /// end in a slash.
    using State = std::map<std::string, std::string>;

    /// All states that a power failure could leave now or, if these are more than so many, that many of them at random.
    std::set<State> states(std::mt19937_64& dice, std::size_t maximum) const;

private:
    friend struct DiskCalls;

    struct File {
        std::string synced;
        std::vector<std::string> later; // after each operation since
        const std::string& present() const { return later.empty() ? synced : later.back(); }
    };
    struct Naming {
        std::string removed; // a path, or empty
        std::string made;
        int file; // or directory
    };
    using Names = std::map<std::string, int>; // by path, relative to the top
    static constexpr int directory = -1;

    /// Chooses one of so many.
    using Choose = std::function<std::size_t(std::size_t)>;
    State stateBy(const Choose& choose) const;
    std::string contentBy(const File& file, const Choose& choose) const;
    std::string relative(const std::filesystem::path& path) const;
    void name(const std::filesystem::path& removed, const std::filesystem::path& made, int file);
    void change(utilities::Handle file, const std::function<void(std::string&)>& operation);

    std::filesystem::path root;
    std::function<void(const Disk&)> afterEach;
    std::vector<File> files;
    Names syncedNames;
    Names names;
    std::map<std::string, std::vector<Naming>> laterNames; // by directory
    std::map<utilities::Handle, int> openFiles;
    std::map<utilities::Handle, std::string> openDirectories;
};

} // namespace orv::tests

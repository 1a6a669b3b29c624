#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

namespace orv::tests {

/// A directory of the test's own, removed with all that is in it.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::random_device dice;
        path = std::filesystem::temp_directory_path() / ("orv-test-" + std::to_string(dice()) + std::to_string(dice()));
        if (!std::filesystem::create_directory(path)) {
            throw std::runtime_error("no temporary directory");
        }
    }
    /// One that somebody else made, empties and removes.
    explicit TemporaryDirectory(std::filesystem::path made) : path(std::move(made)), isOwn(false) {}
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        if (isOwn) {
            std::filesystem::remove_all(path);
        }
    }

    void empty() const {
        if (isOwn) {
            for (const auto& entry : std::filesystem::directory_iterator(path)) {
                std::filesystem::remove_all(entry.path());
            }
        }
    }

    const std::filesystem::path& getPath() const { return path; }
    std::filesystem::path operator/(const std::string& name) const { return path / name; }

private:
    std::filesystem::path path;
    bool isOwn = true;
};

inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void setContent(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios_base::binary) << content;
}

} // namespace orv::tests

#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace orv::tests {

/// A directory of the test's own, removed with all that is in it.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = std::filesystem::temp_directory_path() / "orv-test-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path = name;
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() { std::filesystem::remove_all(path); }

    void empty() const {
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            std::filesystem::remove_all(entry.path());
        }
    }

    std::filesystem::path operator/(const std::string& name) const { return path / name; }

private:
    std::filesystem::path path;
};

inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void setContent(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios_base::binary) << content;
}

} // namespace orv::tests

#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct zip;
struct zip_source;

namespace annotate {

/// A zip archive of small files, each of which is unpacked as a whole.
class ZipArchive {
public:
    /// Throws RequestError if the file can't be read as an archive, or has an entry whose path leads out of it.
    explicit ZipArchive(std::filesystem::path archivePath);

    /// The paths of the entries, in their order.
    const std::vector<std::string>& getNames() const { return names; }

    /// The content of the entry at the place among the names. Throws RequestError if it is damaged or encrypted, or
    /// larger than a file of users' texts can be, or all that were asked for are.
    std::string contentOf(std::size_t place);

private:
    std::filesystem::path path;
    std::unique_ptr<zip, void (*)(zip*)> archive;
    std::vector<std::string> names;
    std::uint64_t unpacked = 0;
};

/// A zip archive that is made in memory. The same entries make the same bytes. Operations throw RequestError if there
/// is no memory for it.
class NewZipArchive {
public:
    NewZipArchive();

    void add(const std::string& name, std::string content);

    /// All of it; nothing can be added behind that.
    std::string finish();

private:
    [[noreturn]] static void fail();

    std::unique_ptr<zip_source, void (*)(zip_source*)> source;
    std::unique_ptr<zip, void (*)(zip*)> archive;
    std::deque<std::string> contents; ///< They are packed at the end.
};

} // namespace annotate

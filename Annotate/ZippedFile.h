#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <streambuf>

struct zip;
struct zip_file;

namespace annotate {

/// The content of the one .ifc file in a zip archive, unpacked block by block as it is read, so that it takes no more
/// memory than a block however large it is. It can be read again from its start. Every operation throws ModelError if
/// the archive is damaged, or the content isn't what the archive says or implausibly large.
class ZippedFile : public std::streambuf {
public:
    /// Throws ModelError as well if there isn't one such file in the archive, or it can't be unpacked.
    explicit ZippedFile(const std::filesystem::path& archivePath);

    /// Whether the file, which is at its start and stays there, is such an archive, by its first bytes.
    static bool isZip(std::istream& file);

    /// Of the content, as the archive says.
    std::uint64_t size() const { return statedSize; }

    /// Reads to the end, where what was damaged shows.
    void requireWhole();

protected:
    int_type underflow() override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    static constexpr std::size_t blockSize = 64UL * 1024;

    std::uint64_t findFile();
    void open();

    std::filesystem::path path;
    std::unique_ptr<zip, void (*)(zip*)> archive;
    std::uint64_t place; ///< Of the file in the archive.
    std::uint64_t statedSize = 0;
    std::unique_ptr<zip_file, void (*)(zip_file*)> content;
    std::uint64_t unpacked = 0;
    std::array<char, blockSize> block{};
};

} // namespace annotate

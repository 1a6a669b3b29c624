#include "Annotate/ZippedFile.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/ModelFile.h"

#include <string>
#include <string_view>
#include <utility>
#include <zip.h>

namespace annotate {

namespace {

/// No IFC file is packed to less; what says so is made to fill a disk or a memory.
constexpr std::uint64_t maximumRatio = 200;
/// Up to this much, it does no harm.
constexpr std::uint64_t harmlessSize = 64UL * 1024 * 1024;

constexpr std::string_view repack = "Pack it again, or give the .ifc file itself.";

/// What it is about, in brackets; empty if that says no more.
ModelError damaged(const std::filesystem::path& path, const std::string& reason) {
    return refusedModel(path,
                        "is a zip archive that is cut off or damaged" + (reason.empty() ? "" : " (" + reason + ')'),
                        "Fetch it again.");
}

::zip_t* openArchive(const std::filesystem::path& path) {
    int code = 0;
    ::zip_t* const archive = ::zip_open(path.string().c_str(), ZIP_RDONLY, &code);
    if (archive == nullptr) {
        throw damaged(path, "");
    }
    return archive;
}

void closeContent(::zip_file_t* content) {
    ::zip_fclose(content);
}

/// Whether the entry is an .ifc file, and not what macOS keeps beside one under a name that begins with "._".
bool isIfc(const std::filesystem::path& entry) {
    return equalsInAnyCase(entry.extension().string(), ".ifc") && !entry.filename().string().starts_with("._");
}

} // namespace

ZippedFile::ZippedFile(std::filesystem::path archivePath)
    : path(std::move(archivePath)),
      archive(openArchive(path), ::zip_discard),
      place(findFile()),
      content(nullptr, closeContent) {
    ::zip_stat_t entry{};
    constexpr ::zip_uint64_t needed = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
    if (::zip_stat_index(archive.get(), place, 0, &entry) != 0 || (entry.valid & needed) != needed) {
        throw damaged(path, ::zip_strerror(archive.get()));
    }
    if (entry.encryption_method != ZIP_EM_NONE) {
        throw refusedModel(path, "is a zip archive that is encrypted", "Unpack it, and give the .ifc file in it.");
    }
    if (entry.size > harmlessSize && entry.size / maximumRatio > entry.comp_size) {
        throw refusedModel(path,
                           std::string("is a zip archive that says to hold more than ")
                               .append(std::to_string(maximumRatio))
                               .append(" times its size, as no IFC file does"),
                           repack);
    }
    statedSize = entry.size;
    open();
}

bool ZippedFile::isZip(std::istream& file) {
    std::array<char, 4> start{};
    file.read(start.data(), start.size());
    file.clear();
    file.seekg(0);
    const std::string_view signature(start.data(), start.size());
    return signature == "PK\3\4" || signature == "PK\5\6"; // the second of an empty one
}

void ZippedFile::requireWhole() {
    while (underflow() != traits_type::eof()) {}
}

ZippedFile::int_type ZippedFile::underflow() {
    const ::zip_int64_t count = ::zip_fread(content.get(), block.data(), block.size());
    if (count < 0) {
        throw damaged(path, ::zip_file_strerror(content.get()));
    }
    unpacked += static_cast<std::uint64_t>(count);
    if (unpacked > statedSize) {
        throw damaged(path, "It holds more than it says");
    }
    setg(block.data(), block.data(), block.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(block.front());
}

/// The start alone can be sought.
ZippedFile::pos_type ZippedFile::seekpos(pos_type position, std::ios_base::openmode /*which*/) {
    if (position != pos_type(0)) {
        return off_type(-1);
    }
    open();
    return position;
}

/// Its place in the archive.
std::uint64_t ZippedFile::findFile() {
    std::string found;
    std::uint64_t foundPlace = 0;
    const ::zip_int64_t count = ::zip_get_num_entries(archive.get(), 0);
    for (::zip_int64_t each = 0; each < count; ++each) {
        const auto eachPlace = static_cast<std::uint64_t>(each);
        const char* const name = ::zip_get_name(archive.get(), eachPlace, 0);
        if (name == nullptr || !isIfc(name)) {
            continue;
        }
        if (!found.empty()) {
            throw refusedModel(path,
                               std::string("is a zip archive with several .ifc files, ")
                                   .append(found)
                                   .append(" and ")
                                   .append(name)
                                   .append(" among them"),
                               "Unpack it, and give one of them.");
        }
        found = name;
        foundPlace = eachPlace;
    }
    if (found.empty()) {
        throw refusedModel(path, "is a zip archive without an .ifc file in it",
                           "Give an IFC file, or one packed alone.");
    }
    return foundPlace;
}

void ZippedFile::open() {
    content.reset(::zip_fopen_index(archive.get(), place, 0));
    if (content == nullptr) {
        throw refusedModel(
            path,
            std::string("is a zip archive that can't be unpacked (").append(::zip_strerror(archive.get())).append(")"),
            repack);
    }
    unpacked = 0;
    setg(nullptr, nullptr, nullptr);
}

} // namespace annotate

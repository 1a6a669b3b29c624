#include "Annotate/ZipArchive.h"

#include "Annotate/Arguments.h"

#include <algorithm>
#include <utility>
#include <zip.h>

namespace annotate {

namespace {

/// Of a file, unpacked. What people write is a thousandth of that.
constexpr std::uint64_t maximumSize = 64UL * 1024 * 1024;
/// Of all files that are read.
constexpr std::uint64_t maximumTotal = 4 * maximumSize;

RequestError damagedArchive(const std::filesystem::path& path) {
    return RequestError(path.string() + " is a zip archive that is cut off or damaged. Fetch it again.");
}

::zip_t* openForReading(const std::filesystem::path& path) {
    int code = 0;
    ::zip_t* const archive = ::zip_open(path.string().c_str(), ZIP_RDONLY, &code);
    if (archive == nullptr) {
        if (code == ZIP_ER_NOENT || code == ZIP_ER_OPEN || code == ZIP_ER_READ) {
            throw RequestError(path.string() + " can't be read. Check its name.");
        }
        throw code == ZIP_ER_NOZIP ? RequestError(path.string() + " isn't a zip archive, as such a file is.")
                                   : damagedArchive(path);
    }
    return archive;
}

void closeFile(::zip_file_t* file) {
    ::zip_fclose(file);
}

/// Whether a program that unpacks it could be led out of its folder.
bool leadsOut(const std::filesystem::path& entry) {
    return entry.is_absolute() || entry.string().find(':') == 1 || // of a drive
           std::find(entry.begin(), entry.end(), "..") != entry.end();
}

} // namespace

ZipArchive::ZipArchive(std::filesystem::path archivePath)
    : path(std::move(archivePath)), archive(openForReading(path), ::zip_discard) {
    const ::zip_int64_t count = ::zip_get_num_entries(archive.get(), 0);
    for (::zip_int64_t each = 0; each < count; ++each) {
        const char* const name = ::zip_get_name(archive.get(), static_cast<std::uint64_t>(each), 0);
        if (name == nullptr) {
            throw damagedArchive(path);
        }
        std::string& kept = names.emplace_back(name);
        std::replace(kept.begin(), kept.end(), '\\', '/'); // as some programs on Windows write it
        if (leadsOut(kept)) {
            throw RequestError(path.string() + " holds a file \"" + kept +
                               "\", whose path leads out of it. It isn't read.");
        }
    }
}

std::string ZipArchive::contentOf(std::size_t place) {
    ::zip_stat_t entry{};
    constexpr ::zip_uint64_t needed = ZIP_STAT_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
    if (::zip_stat_index(archive.get(), place, 0, &entry) != 0 || (entry.valid & needed) != needed) {
        throw damagedArchive(path);
    }
    if (entry.encryption_method != ZIP_EM_NONE) {
        throw RequestError(names[place] + " in " + path.string() + " is encrypted. Pack it without a password.");
    }
    if (entry.size > maximumSize) {
        throw RequestError(names[place] + " in " + path.string() +
                           " says to hold more than 64 MB, which no text does.");
    }
    const std::unique_ptr<::zip_file_t, void (*)(::zip_file_t*)> file(::zip_fopen_index(archive.get(), place, 0),
                                                                      closeFile);
    if (file == nullptr) {
        throw damagedArchive(path);
    }
    unpacked += entry.size;
    if (unpacked > maximumTotal) {
        throw RequestError(path.string() + " says to hold more than 256 MB, which no texts do.");
    }
    std::string content(entry.size, '\0');
    std::size_t size = 0;
    ::zip_int64_t count = 0;
    while (size < content.size() && (count = ::zip_fread(file.get(), &content[size], content.size() - size)) > 0) {
        size += static_cast<std::size_t>(count);
    }
    char behind = 0;
    if (size < content.size() || ::zip_fread(file.get(), &behind, 1) != 0) { // where what was damaged shows
        throw damagedArchive(path);
    }
    return content;
}

NewZipArchive::NewZipArchive()
    : source(::zip_source_buffer_create(nullptr, 0, 0, nullptr), ::zip_source_free), archive(nullptr, ::zip_discard) {
    if (source == nullptr) {
        fail();
    }
    archive.reset(::zip_open_from_source(source.get(), ZIP_TRUNCATE, nullptr));
    if (archive == nullptr) {
        fail();
    }
    ::zip_source_keep(source.get()); // the archive has one share in it
}

void NewZipArchive::add(const std::string& name, std::string content) {
    const std::string& kept = contents.emplace_back(std::move(content));
    ::zip_source_t* const entry = ::zip_source_buffer(archive.get(), kept.data(), kept.size(), 0);
    const ::zip_int64_t place = ::zip_file_add(archive.get(), name.c_str(), entry, ZIP_FL_ENC_UTF_8);
    if (place < 0) {
        ::zip_source_free(entry);
        fail();
    }
    constexpr ::zip_uint16_t firstDay = (1U << 5U) | 1U; // of 1980, where the times of such archives begin
    ::zip_file_set_dostime(archive.get(), static_cast<std::uint64_t>(place), 0, firstDay, 0);
}

std::string NewZipArchive::finish() {
    if (::zip_close(archive.get()) != 0) {
        fail();
    }
    static_cast<void>(archive.release());
    ::zip_stat_t whole{};
    if (::zip_source_stat(source.get(), &whole) != 0 || ::zip_source_open(source.get()) != 0) {
        fail();
    }
    std::string bytes(whole.size, '\0');
    const ::zip_int64_t count = ::zip_source_read(source.get(), bytes.data(), bytes.size());
    ::zip_source_close(source.get());
    if (count != static_cast<::zip_int64_t>(bytes.size())) {
        fail();
    }
    return bytes;
}

void NewZipArchive::fail() {
    throw RequestError("There isn't enough memory for the archive. Nothing was exported.");
}

} // namespace annotate

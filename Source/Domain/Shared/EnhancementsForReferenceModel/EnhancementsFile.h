#pragma once

#include "OrvExport.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace orv::utilities {

struct Digest;
struct FileState;
class LockedFile;

} // namespace orv::utilities

namespace orv::xml {

class Outline;

} // namespace orv::xml

namespace orv::domain::shared::enhancementsforreferencemodel {

class Enhancements;
struct KnownFile;

/// The file that the records are stored in, and a guard on it for one load or one addition. Hosts call setFilePath; all
/// else is the library's own and isn't exported.
///
/// The file is an XML document with the root element Enhancements and in it an element for each record, named by its
/// kind, with the element OwnerId and one element an attribute. Among them stands what the load made no record of. It
/// is written under its lock alone, and only the bytes that differ; content that this process doesn't know is kept
/// first. A guard holds the lock from a successful lockFile to its own end, and its end is what writes.
class EnhancementsFile {
public:
    /// Sets the path for all that follows; there is none at start. A relative path is relative to the current
    /// directory at each access. Touches no file: the records in memory stay, and the next addition writes them all to
    /// the new path, over what the file there holds, of which a copy is kept, and makes the file and its directories if
    /// they are missing.
    ORV_ENHANCEMENTS_EXPORT static void setFilePath(std::filesystem::path path);

    /// A guard without the lock. The database must outlive it.
    explicit EnhancementsFile(const Enhancements& database);

    /// Writes the database and lets go of the lock, if the guard holds it.
    ~EnhancementsFile();

    EnhancementsFile(const EnhancementsFile&) = delete;
    EnhancementsFile& operator=(const EnhancementsFile&) = delete;

    /// Makes the file with the records in memory if it is missing, then tries once to take its lock and to keep a copy
    /// of what this process neither read nor wrote. Returns whether the guard holds the lock now. While it holds the
    /// lock already, that is reported, the attempt fails, and the lock is lost.
    bool lockFile();

    /// Writes the database over the file's content, under the lock, which it tries once to take if the guard hasn't got
    /// it. Once per guard: it reckons with what the file held when it was locked.
    void writeFile();

    /// Writes the database as the end of a guard that holds the lock would, lets go of the lock, and returns whether
    /// what was written is on the disk. Requires the lock.
    bool save();

    /// Writes the database to the stream as one document. Returns false, with nothing written, if the stream
    /// isn't good, and false if it isn't good afterwards.
    bool write(std::ostream& stream) const;

    /// Reads the file into the process's database, without a lock. Returns true if it is a document with the root
    /// element Enhancements. False if it isn't, which is reported, and if it is missing or can't be read, which is not.
    static bool readFile();

    /// The same as Enhancements::loadAtOnce loads, and returns what that does.
    static bool readFileAtOnce();

    /// Adds each record of the document on the stream, of a kind that Factory knows, to the process's
    /// database. Returns true if the document has the root element Enhancements, even if no record came of it.
    static bool read(std::istream& stream);

private:
    static void report(std::string_view message, std::string_view operation, std::uint32_t line);
    static std::optional<xml::Outline> parse(std::string content);
    static std::shared_ptr<const xml::Outline> startReading(std::error_code& error);
    static std::shared_ptr<const xml::Outline> startLoad(xml::Outline outline);
    static void load(const std::shared_ptr<const xml::Outline>& document);
    static bool loadAtOnce(const std::shared_ptr<const xml::Outline>& document);
    static void endLoad(const Enhancements& database) noexcept;
    void createFile() const;
    std::unique_ptr<utilities::LockedFile> lockAndProtect(std::error_code& error);
    bool protect(const utilities::LockedFile& file);
    bool merge(const utilities::LockedFile& file, const utilities::Digest& digest, const KnownFile& known);
    bool writeThrough(utilities::LockedFile& file, const std::optional<std::string>& content) const;
    bool replace(utilities::LockedFile& file, const std::optional<std::string>& content, bool addsNothing) const;
    bool keepAlteredTexts(const utilities::LockedFile& file, const std::optional<std::string>& content) const;
    void noteFormerElements(const utilities::LockedFile& file) const;
    void rememberContent(const std::optional<utilities::FileState>& state) const;

    static std::filesystem::path getFilePath();

    const Enhancements& enhancementsDb;
    std::unique_ptr<utilities::LockedFile> fileLock; // held if not null
    std::optional<std::string> present;              // what the locked file holds, unless that is the accepted document
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

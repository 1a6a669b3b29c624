#pragma once

#include "Export.h"
#include "Utilities/FileLock.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <optional>

namespace orv::xml {

class MarkupWriter;
class Outline;

} // namespace orv::xml

namespace orv::domain::shared::enhancementsforreferencemodel {

class Enhancements;

/// The file that the records are stored in, and a guard on it for one load or one addition. Hosts call setFilePath; all
/// else is the library's own and isn't exported.
///
/// The file is an XML document with the root element Enhancements and in it an element for each record, named by its
/// kind, with the element OwnerId and one element an attribute. Among them stands what the load made no record of. It
/// is written only under its lock and always as a whole, and content that this process doesn't know is kept in a copy
/// first. A guard holds the lock from a successful lockFile to its own end, and its end is what writes.
class EnhancementsFile {
public:
    /// Sets the path for all that follows; there is none at start. A relative path is relative to the current
    /// directory at each access. Touches no file: the records in memory stay, and the next addition writes them all to
    /// the new path, over what the file there holds, of which a copy is kept, and makes the file and its directories if
    /// they are missing.
    ORV_EXPORT static void setFilePath(std::filesystem::path path);

    /// A guard without the lock. The database must outlive it.
    explicit EnhancementsFile(const Enhancements& database);

    /// Writes the database and lets go of the lock, if the guard holds it.
    ~EnhancementsFile();

    EnhancementsFile(const EnhancementsFile&) = delete;
    EnhancementsFile& operator=(const EnhancementsFile&) = delete;

    /// Makes the file with the records in memory if it is missing, then tries once to take its lock and to keep a copy
    /// of what this process neither read nor wrote. Gives whether the guard holds the lock now. While it holds the lock
    /// already, that is reported, the attempt fails, and the lock is lost.
    bool lockFile();

    /// Writes the database over the file's content, under the lock, which it tries once to take if the guard hasn't got
    /// it. Once per guard: the replacement reckons with the size that the file had when it was locked.
    void writeFile();

    /// Writes the database to the stream as one document. Gives false, with nothing written, if the stream
    /// isn't good, and false if it isn't good afterwards.
    bool write(std::ostream& stream) const;

    /// Reads the file into the process's database, without a lock. Gives what read gives, and false if the
    /// file can't be opened; a missing one is no error.
    static bool readFile();

    /// Adds each record of the document on the stream, of a kind that Factory knows, to the process's
    /// database. Gives true if the document has the root element Enhancements, even if no record came of it.
    static bool read(std::istream& stream);

private:
    static std::optional<xml::Outline> parse(std::istream& stream, std::uint64_t streamSize);
    static void load(const xml::Outline& document);
    void createFile() const;
    std::unique_ptr<utilities::FileLock> tryLock() const;
    void writeThrough(utilities::FileLock& lock) const;
    void appendDocument(xml::MarkupWriter& out) const;
    template <typename Use>
    bool useDocument(std::uint64_t replacedSize, Use use) const;
    bool holdsDocument(const utilities::FileLock& lock) const;

    static std::filesystem::path filePath;

    const Enhancements& enhancementsDb;
    std::unique_ptr<utilities::FileLock> fileLock; // held if not null
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

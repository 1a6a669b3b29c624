#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "OrvExport.h"

#include <memory>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// The process's database of records, stored in the file that EnhancementsFile::setFilePath names.
///
/// The first call of any static function loads the file, once in the life of the process. A host therefore registers
/// its kinds with Factory and sets the path before. Records are added to the database and, with it, to the file; a
/// change to a record in memory, and resetDb, reach the file with the next addition or saveChanges.
///
/// Nothing that the file holds is lost by this. What the load doesn't turn into a record (an element of a kind that
/// isn't registered, a record for which the lock can't be had, a comment) stays in the file as it stands and where it
/// stands among the records, and so does what another program adds meanwhile. What a record's kind doesn't return of
/// its element (a field of a newer host, a comment) stays in the element. Before anything else is overwritten that this
/// process neither read nor wrote, it is copied to NAME.kept-UTCTIME beside the file; docs/enhancements-file.md tells
/// more.
///
/// The records are destroyed when the library is unloaded, and what is called after that finds an empty database that
/// is stored nowhere. So a plug-in that brought the library in begins anew when it is loaded again, and one that
/// defines a kind is unloaded with the library, never before it; compiled by GCC, either needs -fno-gnu-unique for
/// that, and the program must be linked with libstdc++ itself. Called from one thread at a time.
class Enhancements : public std::enable_shared_from_this<Enhancements> {
public:
    Enhancements();
    ~Enhancements();
    Enhancements(Enhancements&& other) noexcept;
    Enhancements& operator=(Enhancements&& other) noexcept;

    /// The database, shared with all callers; never null, whether or not the file could be read. The records
    /// of the file are added to it one by one, each with a rewrite of the file, on the first call. What a kind throws
    /// then comes through and ends the load; what wasn't loaded stays in the file. A file in the library's own layout
    /// isn't written by that.
    ORV_ENHANCEMENTS_EXPORT static std::shared_ptr<Enhancements> getOrCreateEnhancementsDb();

    /// Loads the file as the first use of the database would, but with one rewrite for all records: of n records that
    /// asks each for its attributes once, not up to n times. To be called before that first use. Waits up to a second
    /// for another program that has the file locked, and holds the lock meanwhile, so that a kind can't add records
    /// while it is read.
    ///
    /// Returns whether all records of registered kinds are in the database now. False, and all elements are carried, if
    /// the file is there and can't be read or locked, or is no document of records; false if the database was in use.
    ORV_ENHANCEMENTS_EXPORT static bool loadAtOnce();

    /// Takes the record, which must not be null, into the database and rewrites the file with all records under its
    /// lock. Where that has succeeded, the record is on the disk: it is there after a kill at any moment and after a
    /// power failure.
    ///
    /// If the lock can't be had (another program holds it, or the file can't be made or opened for writing), or a
    /// copy must be kept and can't be made, nothing happens and the record stays in the caller's pointer; otherwise
    /// that is null afterwards. A write that fails under the lock isn't reported: the record stays in memory and is
    /// written with the next addition. If the disk was full, or a kind throws while the document is
    /// made, the file keeps its old content.
    ORV_ENHANCEMENTS_EXPORT static void addEnhancement(std::unique_ptr<EnhancementBase>&& record);

    /// Takes all the records, none of which may be null, with one rewrite. Returns true, and leaves the vector empty,
    /// if they are on the disk; otherwise false, and nothing has changed.
    ORV_ENHANCEMENTS_EXPORT static bool addEnhancements(std::vector<std::unique_ptr<EnhancementBase>>& added);

    /// Writes what was changed in records, or cleared, as an addition does. Returns whether it is on the disk;
    /// otherwise the changes are in memory.
    ORV_ENHANCEMENTS_EXPORT static bool saveChanges();

    /// Removes a record from the database and the file, with all that was carried with it, and returns it. Null, and
    /// nothing has changed, if it isn't one of the database's or the file can't be
    /// written.
    ORV_ENHANCEMENTS_EXPORT static std::unique_ptr<EnhancementBase> takeRecord(const EnhancementBase& record);

    /// The same for several records with one rewrite, all of them or none, which an empty result tells. They come in
    /// the order of the database; one that is named twice counts once.
    ORV_ENHANCEMENTS_EXPORT static std::vector<std::unique_ptr<EnhancementBase>>
    takeRecords(std::vector<const EnhancementBase*> wanted);

    /// Destroys all records, from the first to the last. The file isn't read again, and stays as it is until the next
    /// addition or saveChanges, which removes them from it. A record that a destructor adds stays.
    ORV_ENHANCEMENTS_EXPORT void resetDb();

    /// The records in the order in which they were added, those of the file first; none is null. A caller may
    /// change a record, but not remove one here. Whatever adds or removes records invalidates iterators.
    const std::vector<std::unique_ptr<EnhancementBase>>& getRecords() const { return records; }

private:
    friend class EnhancementsFile;

    struct State;

    std::vector<std::unique_ptr<EnhancementBase>> records;
    std::unique_ptr<State> state; // what is known of the file
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/CarriedMarkup.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "Export.h"
#include "Xml/MarkupWriter.h"

#include <memory>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// The process's database of records, stored in the file that EnhancementsFile::setFilePath names.
///
/// The first call of getOrCreateEnhancementsDb or addEnhancement loads the file, once in the life of the process. A
/// host therefore registers its kinds with Factory and sets the path before. Records are added to the database and,
/// with it, to the file; a change to a record in memory, and resetDb, reach the file with the next addition.
///
/// What the load doesn't turn into a record (an element of a kind that isn't registered, a record for which the lock
/// can't be had, a comment) stays in the file as it stands and where it stands among the records. Before the
/// file is overwritten, content that this process neither read nor wrote (another process's additions, a file that is
/// no document of records) is copied to NAME.kept-UTCTIME beside it; docs/enhancements-file.md tells more.
///
/// The records are destroyed when the library is unloaded; a plug-in that defines a kind stays loaded until then.
/// Called from one thread at a time.
class Enhancements : public std::enable_shared_from_this<Enhancements> {
public:
    /// The database, shared with all callers; never null, whether or not the file could be read. The records
    /// of the file are added to it one by one, each with a rewrite of the file, on the first call. What a kind throws
    /// then comes through and ends the load; what wasn't loaded stays in the file.
    ORV_EXPORT static std::shared_ptr<Enhancements> getOrCreateEnhancementsDb();

    /// Takes the record, which must not be null, into the database and rewrites the file with all records under its
    /// lock. If the lock can't be had (another program holds it, or the file can't be made or opened for writing), or a
    /// copy must be kept and can't be made, nothing happens and the record stays in the caller's pointer; otherwise
    /// that is null afterwards. A write that fails under the lock isn't reported: the record stays in memory and is
    /// written with the next addition. If the disk was full, or a kind throws while the document is
    /// made, the file keeps its old content.
    ORV_EXPORT static void addEnhancement(std::unique_ptr<EnhancementBase>&& record);

    /// Destroys all records. The file stays as it is until the next addition, which leaves none of them there, and
    /// isn't read again.
    ORV_EXPORT void resetDb();

    /// The records in the order in which they were added, those of the file first; none is null. A caller may
    /// change a record, but not remove one. addEnhancement and resetDb invalidate iterators.
    const std::vector<std::unique_ptr<EnhancementBase>>& getRecords() const { return records; }

private:
    friend class EnhancementsFile;

    static std::shared_ptr<Enhancements> singleton;

    std::vector<std::unique_ptr<EnhancementBase>> records;
    CarriedMarkup carried;
    mutable std::unique_ptr<xml::MarkupWriter> idleWriter; // kept for its room
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

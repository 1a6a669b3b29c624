#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Turn.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace annotate {

using Records = std::vector<std::unique_ptr<orv::domain::shared::enhancementsforreferencemodel::EnhancementBase>>;

/// The records of a kind among the others, in their order.
template <typename Kind>
std::vector<Kind*> allOf(const Records& records) {
    std::vector<Kind*> all;
    for (const auto& record : records) {
        if (auto* const ofKind = dynamic_cast<Kind*>(record.get())) {
            all.push_back(ofKind);
        }
    }
    return all;
}

/// What users added to a model, notes and property edits, in its file. Reads it without a lock and writes nothing, so
/// it may be read-only and another program may write it meanwhile. The missing file of a model without additions holds
/// none. Throws StoreError if the path names something else than a file of records, or one that can't be read, and if
/// --store names a file that is missing.
Records readStore(const Arguments& arguments);

/// As readStore, for commands that make the file: a missing one has no records even if --store names it.
Records readPresentRecords(const Arguments& arguments);

/// Throws StoreError if --store names a file that is missing.
void requireNamedStore(const Arguments& arguments);

/// The store for commands that change it: the file of the process's database, of which there is one. It has a turn at
/// the file for as long as it lives, from before the load, and waits up to a second for another program that has the
/// file locked.
class Store {
public:
    /// Loads the records; a missing file isn't made. Throws StoreError, with nothing changed, where readStore does, if
    /// the file's folder is missing, the file can't be written or locked, and also if another program wrote it during
    /// the load.
    explicit Store(std::filesystem::path storePath);

    static const Records& getRecords();

    /// A new record, which comes into the file with the next write.
    template <typename Kind>
    Kind& make() {
        auto record = std::make_unique<Kind>();
        Kind& made = *record;
        added.push_back(std::move(record));
        return made;
    }

    /// Writes what was made and what was changed in the records, and takes those that are to be removed out of the
    /// store. That is one rewrite, or two if records were made and others are removed. Throws StoreError if it can't be
    /// done; the file is as before then, or as after the first rewrite.
    void
    write(const std::vector<const orv::domain::shared::enhancementsforreferencemodel::EnhancementBase*>& removed = {});

    /// Removes records that tell nothing, if the file can be written; otherwise that is left for the next time.
    static void
    tidy(const std::vector<const orv::domain::shared::enhancementsforreferencemodel::EnhancementBase*>& records);

    const std::filesystem::path& getPath() const { return path; }

private:
    std::filesystem::path path;
    Turn turn;
    Records added;
};

} // namespace annotate

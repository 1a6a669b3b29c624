#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Utilities/FileLock.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

namespace annotate {

/// Tells the user in a sentence why the store can't be used, and what to do.
class StoreError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Waits until no other annotate is working on the model, and keeps others waiting while the result lives. Without it,
/// what another process adds between a load and an addition would survive only in a kept copy. Throws StoreError after
/// a minute. Gives null, with no turn taken, on a file system that can't lock a file opened for reading.
std::unique_ptr<orv::utilities::FileLock> waitForTurn(const std::filesystem::path& model);

/// What users added to a model, notes and property edits, in its file. There can be one in a process, as there is one
/// database.
///
/// The library tells little of what goes wrong with the file, so the store looks for itself, before the load and
/// after an addition. It waits up to a second for another program that has the file locked.
class Store {
public:
    /// Loads the records; a missing file holds none and isn't made. Throws StoreError, with nothing changed, if the
    /// path names something else than a file of records, or one that can't be read, written or locked; and also if
    /// another program wrote the file during the load.
    explicit Store(std::filesystem::path storePath);

    /// All records of a kind in the order in which they were added. They belong to the store.
    template <typename Kind>
    std::vector<const Kind*> getAll() const {
        std::vector<const Kind*> all;
        for (const auto& record : enhancements->getRecords()) {
            if (const auto* ofKind = dynamic_cast<const Kind*>(record.get())) {
                all.push_back(ofKind);
            }
        }
        return all;
    }

    /// Adds a record and writes the file. Throws StoreError if the file doesn't hold it afterwards.
    void add(std::unique_ptr<orv::domain::shared::enhancementsforreferencemodel::EnhancementBase> record);

private:
    std::filesystem::path path;
    std::shared_ptr<orv::domain::shared::enhancementsforreferencemodel::Enhancements> enhancements;
};

} // namespace annotate

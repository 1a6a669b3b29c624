#pragma once

#include "Annotate/Note.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Utilities/FileLock.h"

#include <cstddef>
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

/// Waits up to ten seconds until no other annotate is at the notes of the model, and keeps others waiting for as long
/// as the result lives. A note that another process adds between a load and an addition would be lost otherwise: the
/// store's own lock covers single writes. Gives null, with no turn taken, if the wait was in vain or the file system
/// has no such locks.
std::unique_ptr<orv::utilities::FileLock> waitForTurn(const std::filesystem::path& model);

/// The notes of a model in their file. There can be one in a process, as there is one database.
///
/// The library tells little of what goes wrong with the file, so the store looks for itself, before the load
/// and after an addition. It waits up to a second for another program that has the file locked.
class Store {
public:
    /// Loads the notes; a missing file holds none and isn't made. Throws StoreError, with nothing changed, if the path
    /// names something else than a file of notes, or one that can't be read, written or locked; and also if another
    /// program wrote the file during the load.
    explicit Store(std::filesystem::path storePath);

    /// All notes in the order in which they were added. They belong to the store.
    std::vector<const Note*> getNotes() const;

    /// Adds a note and writes the file. Throws StoreError if the file doesn't hold the note afterwards.
    void add(const Note& note);

private:
    std::ptrdiff_t countStored(const Note& note) const;

    std::filesystem::path path;
    std::shared_ptr<orv::domain::shared::enhancementsforreferencemodel::Enhancements> enhancements;
};

} // namespace annotate

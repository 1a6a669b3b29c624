#pragma once

#include <filesystem>

namespace annotate {

/// A turn at a store, which one annotate has at a time: while it lasts, no other one loads or writes a store in the
/// same folder. It is an advisory flock(2) on the folder, so that nothing is left behind, and falls when the process
/// ends.
///
/// Where the folder can't be locked (on NFS, or if it can't be read) all go on without turns; then what another process
/// adds between a load and an addition may survive in a kept copy alone.
class Turn {
public:
    /// Waits for the turn; throws StoreError after a minute. A folder that doesn't exist yet is stood for by the
    /// nearest one above it that does.
    explicit Turn(const std::filesystem::path& store);
    ~Turn();

    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    int folder; // -1 if it can't be opened
};

} // namespace annotate

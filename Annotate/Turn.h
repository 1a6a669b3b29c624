#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace annotate {

/// A lock that one annotate at a time has on the stores of a folder: while it lasts, no other one loads or writes a
/// store there. Nothing is left of it in the folder, and it falls when the process ends: it is an advisory flock(2) on
/// the folder or, on Windows, a mutex named by the folder.
///
/// Where the folder can't be locked (on NFS, or if it can't be read), and from machine to machine on Windows, all go on
/// without turns; then what another process adds between a load and an addition may survive in a kept copy alone.
class Turn {
public:
    /// Waits for the turn; throws StoreError after a minute. A folder that doesn't exist yet is stood for by the
    /// nearest one above it that does.
    explicit Turn(const std::filesystem::path& store);
    ~Turn();

    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    /// Returns true once the turn has come or can't be had, false if that takes longer.
    bool await(const std::filesystem::path& folder, std::chrono::milliseconds patience);
    void end() const;

    std::intptr_t held = -1; // as the platform numbers it; -1 if it has none
};

} // namespace annotate

#pragma once

#include "OrvExport.h"
#include "Utilities/FileState.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace orv::utilities {

/// An open file or directory, as the platform numbers it.
enum class Handle : std::intptr_t { None = -1 };

/// What a file is opened for. None of these waits for another program, and no program that is started gets the handle.
enum class Opening {
    Read,        ///< An existing file.
    ReadNoLink,  ///< The same; fails if the path's last part is a link.
    Write,       ///< An existing file, for reading as well.
    WriteNoLink, ///< The same; fails if the path's last part is a link.
    Make,        ///< As Write; made if it is missing.
    MakeNew,     ///< As Write; fails if anything has that name, a link included. Its owner alone may read it at first.
    Directory,   ///< An existing directory, to be synced.
};

/// How an operation of the platform ended when it ended well.
constexpr std::errc done{};

/// All that the library asks of the operating system for files: the boundary of the platform, whose bodies lie in a
/// directory of its name. Each operation makes one attempt, may be interrupted (std::errc::interrupted), and returns
/// `done` or why it failed. Replaceable for tests alone, before any file is opened; not thread-safe.
struct SystemCalls {
    /// Never the handle of a standard stream, even if that was closed.
    std::errc (*open)(const std::filesystem::path& path, Opening opening, Handle& opened);
    void (*close)(Handle file);
    /// Opens the stream, binary, on the same file, at its start and with the lock that the handle has on it.
    std::errc (*openStream)(Handle file, std::ios_base::openmode direction, std::fstream& stream);

    /// An advisory lock on the whole file, exclusive or shared, against other handles of it: also of this process, and
    /// until it is released or all copies of the handle are closed. resource_unavailable_try_again if another has it.
    std::errc (*lock)(Handle file, bool exclusive);
    std::errc (*unlock)(Handle file);

    /// For what is no regular file, is_a_directory or not_supported.
    std::errc (*getState)(Handle file, FileState& state);
    std::errc (*getStateOf)(const std::filesystem::path& path, FileState& state);

    /// Reads or writes a part or all from the position on, in bytes; nothing is read at the file's end alone.
    std::errc (*readAt)(Handle file, char* buffer, std::size_t size, std::uint64_t position, std::size_t& read);
    std::errc (*writeAt)(Handle file, std::string_view content, std::uint64_t position, std::size_t& written);
    std::errc (*setSize)(Handle file, std::uint64_t size);
    /// The time of the last modification, in nanoseconds since 1970.
    std::errc (*setModificationTime)(Handle file, std::int64_t time);
    /// Gives the file the model's owner, group and permissions as far as the process may set them, and never more
    /// readers than the model has.
    std::errc (*takeAccess)(Handle file, Handle model);
    /// Returns once content and size are on the disk; of a directory, the names in it, where that has a meaning.
    std::errc (*sync)(Handle file);

    /// What had the new name is replaced. remove removes a file or a link.
    std::errc (*rename)(const std::filesystem::path& from, const std::filesystem::path& to);
    std::errc (*remove)(const std::filesystem::path& path);
    std::errc (*makeDirectory)(const std::filesystem::path& path);
    /// Where the link leads; fails for what is no link.
    std::errc (*readLink)(const std::filesystem::path& link, std::filesystem::path& target);
    /// Appends the names of what the directory holds.
    std::errc (*list)(const std::filesystem::path& directory, std::vector<std::filesystem::path>& names);
};

ORV_UTILITIES_EXPORT extern SystemCalls systemCalls;

/// Repeats an operation of the platform for as long as signals interrupt it, and returns its outcome.
template <typename Operation>
std::errc uninterrupted(Operation operation) {
    std::errc outcome = operation();
    while (outcome == std::errc::interrupted) {
        outcome = operation();
    }
    return outcome;
}

} // namespace orv::utilities

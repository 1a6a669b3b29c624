#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h"
#include "OrvExport.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orv::host {

/// Why no records were read.
struct ReadFailure {
    /// What is wrong with the file.
    enum class Reason {
        Missing,       ///< There is no file.
        Unreadable,    ///< It can't be read, or isn't a regular file. The detail tells.
        NotWellFormed, ///< It is no XML document, also an empty one. The detail is the parser's word for that.
        OtherRoot      ///< It is another document. The detail is the name of its root.
    };

    Reason reason = Reason::Missing;
    std::string detail;
    std::uint64_t line = 0;   ///< Of what isn't well-formed, from 1; otherwise 0.
    std::uint64_t column = 0; ///< The same, in bytes.

    /// A sentence for people, as in "Line 3, column 7: mismatched tag."
    ORV_HOST_EXPORT std::string toString() const;
};

/// What a file of records held.
struct RecordsRead {
    std::vector<std::unique_ptr<domain::shared::enhancementsforreferencemodel::EnhancementBase>> records; ///< In order.

    /// The kinds that Factory made no record of, by name, and how many elements there were of each.
    std::map<std::string, std::size_t> leftOut;

    /// Why there is nothing; no value if the document could be read.
    std::optional<ReadFailure> failure;
};

/// Reads the records of any file, a colleague's or one on a share, without the process's database and its file: Factory
/// makes them, and the caller owns them. Takes no lock and writes nothing. While a program writes the file, or if one
/// ended within a write, the records are those of before, unless the new document is whole. What a kind throws comes
/// through.
ORV_HOST_EXPORT RecordsRead readRecords(const std::filesystem::path& path);

/// The same from the stream's position to its end. A stream that isn't good is unreadable.
ORV_HOST_EXPORT RecordsRead readRecords(std::istream& stream);

} // namespace orv::host

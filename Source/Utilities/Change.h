#pragma once

#include "OrvExport.h"
#include "Utilities/Digest.h"

#include <cstdint>
#include <string_view>

namespace orv::utilities {

/// What has to be written over a content to make another one of it: all from the first byte that differs on or, if both
/// are of one size, to the last one.
struct Change {
    std::uint64_t position = 0;
    std::string_view before; // from the position on
    std::string_view after;

    bool isNone() const { return before.empty() && after.empty(); }

    /// The parts are those of the contents, which must last.
    ORV_UTILITIES_EXPORT static Change between(std::string_view content, std::string_view other);
};

/// A content in the place of another one.
struct Replacement {
    Change change;
    std::uint64_t sizeBefore = 0;
    Digest before;
    std::string_view content; // all of it
    Digest after;
};

} // namespace orv::utilities

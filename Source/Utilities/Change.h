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

    /// before and after are views into the two contents, which must outlive the change.
    ORV_UTILITIES_EXPORT static Change between(std::string_view content, std::string_view other);
};

/// A content that takes the place of another one, and what has to be written for that.
struct Replacement {
    Change change;
    std::uint64_t sizeBefore = 0;
    Digest digestBefore;
    std::string_view content; // all of the new one
    Digest digestAfter;
};

} // namespace orv::utilities

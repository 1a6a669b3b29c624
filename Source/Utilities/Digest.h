#pragma once

#include "OrvExport.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orv::utilities {

/// What tells one content from another without keeping it. No protection against contents that were made to collide.
struct Digest {
    std::uint64_t first = 0;
    std::uint64_t second = 0;

    auto operator<=>(const Digest&) const = default; // NOLINT(modernize-use-nullptr): none is written here

    ORV_UTILITIES_EXPORT static Digest of(std::string_view content);
};

/// The digest of a content that changes behind a beginning that stays.
class ORV_UTILITIES_EXPORT RunningDigest {
public:
    /// Takes the content, of which that many bytes at the beginning are those of the content before.
    void update(std::string_view content, std::size_t unchanged);

    const Digest& get() const { return digest; }

private:
    std::vector<Digest> blocks;
    Digest digest;
};

} // namespace orv::utilities

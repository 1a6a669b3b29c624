#pragma once

#include "Utilities/Digest.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// What tells one element from another.
struct ElementKey {
    utilities::Digest markup;
    std::uint64_t subject = 0; // a digest of its name and its owner
};

/// An element as it stood in a file when this process last read or wrote that.
struct KnownElement {
    static constexpr std::uint64_t noSlot = 0;

    ElementKey key;
    std::uint64_t slot = noSlot; // of the record that this process has for it, if it has one
};

/// Matches the elements of a file that other programs have written since with those that stood there.
struct ElementMatch {
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    /// Of an element of the file.
    struct Found {
        std::size_t known =
            none; // the number of the known element that it is, or was before it changed; none if it is new
        bool isInPlace = false; // in order with all others that are
    };

    std::vector<Found> found; // in the order of the file
    bool isComplete = true;   // no record of this process is gone or changed

    /// An element of the file that stands where one of its name and owner should stand, between the same neighbours, is
    /// taken for that one, changed.
    static ElementMatch between(std::span<const KnownElement> known, std::span<const ElementKey> file);
};

} // namespace orv::domain::shared::enhancementsforreferencemodel

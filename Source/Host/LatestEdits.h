#pragma once

#include "Host/NumberTable.h"
#include "Host/PropertyEdits.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace orv::host {

/// The latest of the edits of each property of an object. Made for many objects, one after the other.
class LatestEdits {
public:
    struct Edit {
        PropertyEdit content;
        const std::string* line = nullptr; ///< That which tells the edit; not null in what get returns.
    };

    void clear();

    /// Takes the edit that the line tells, unless it has a later one of the property. Returns whether it tells one. The
    /// line outlives this.
    bool take(const std::string& line);

    /// The latest edit of each property, in the order in which the properties came first; to be changed in place. Good
    /// until the next take or clear.
    std::span<Edit> get() { return {edits.data(), count}; }

private:
    std::vector<Edit> edits; // those from count on are kept for their room
    std::size_t count = 0;
    NumberTable numbers;
};

} // namespace orv::host

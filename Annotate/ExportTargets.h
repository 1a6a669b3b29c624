#pragma once

#include "Annotate/EditIndex.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/StatementFinder.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace annotate {

/// The edits on objects of a model by the sets that an export puts them in. Objects and sets are named by the numbers
/// of their instances.
struct ExportTargets {
    using Entries = std::vector<const EditIndex::Entry*>;
    using EntriesOfObjects = std::map<std::uint64_t, Entries>;

    std::map<std::uint64_t, EntriesOfObjects> sets;      ///< Those that objects have of their own.
    std::map<std::string, EntriesOfObjects> newSets;     ///< Those that they are to get, by name.
    std::map<std::uint64_t, const ModelObject*> objects; ///< All that have edits.
    std::vector<std::uint64_t> types;                    ///< Type objects that have one of the sets, or get one.
    std::size_t vanished = 0;                            ///< Edits of objects that the model doesn't have.

    /// Without the edits that only unset something. The index outlives it.
    static ExportTargets of(const ModelDetails& details, const EditIndex& edits);

    bool areNone() const { return sets.empty() && newSets.empty(); }

    /// Reads the model's file for the statements of all these and of the members of the sets.
    std::unique_ptr<const StatementFinder> findStatements(const ModelDetails& details) const;
};

/// The member of that name in a set of properties; 0 if there is none.
std::uint64_t memberOf(const ModelStatements& statements, std::uint64_t set, const std::string& name);

} // namespace annotate

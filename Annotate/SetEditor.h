#pragma once

#include "Annotate/ExportedProperty.h"
#include "Annotate/NewStatements.h"
#include "Annotate/Replacements.h"
#include "Annotate/StatementFinder.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace annotate {

/// A property that comes into a set.
struct SetMember {
    ExportedProperty property;
    std::uint64_t replaced = 0; ///< The one of that name that the set has; 0 if it has none.
};

/// Edits sets of properties for an export, makes new ones, and collects all that the export changes in the file.
class SetEditor {
public:
    /// statements are the model's; found are those to be edited, with their places in the file. Both outlive it.
    SetEditor(const ModelStatements& modelStatements, const StatementFinder& found)
        : statements(modelStatements), finder(found), added(found.getHighestId()) {}

    /// Puts the members into the set itself.
    void edit(std::uint64_t set, const std::vector<SetMember>& members);

    /// A copy of the set with the members in it, the same one for the same key, which is equal for equal members. Its
    /// GlobalId comes from the set's, the key, and the GlobalId of the first object that gets it.
    std::uint64_t variantOf(std::uint64_t set, const std::string& key, const std::vector<SetMember>& members,
                            const std::string& ownerId);

    /// A new set of the name with the members in it. Its GlobalId comes from the name, the key, and the GlobalId of the
    /// first object that gets it.
    std::uint64_t makeSet(const std::string& name, const std::string& ownerHistory, const std::string& key,
                          const std::vector<SetMember>& members, const std::string& ownerId);

    void replace(const FoundStatement& statement, std::string_view parameters);

    NewStatements& getNew() { return added; }

    /// All that is changed and added.
    Replacements takeReplacements();

private:
    std::size_t countUses(std::uint64_t property);
    StatementParts withMembers(const FoundStatement& set, const std::vector<SetMember>& members);

    const ModelStatements& statements;
    const StatementFinder& finder;
    NewStatements added;
    std::map<std::pair<std::uint64_t, std::string>, std::uint64_t> variants;
    std::unordered_map<std::uint64_t, std::size_t> uses; ///< Of properties, once they are counted.
    Replacements replacements;
};

} // namespace annotate

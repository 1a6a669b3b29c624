#include "Annotate/SetEditor.h"

#include "Annotate/StepParameters.h"
#include "Annotate/StepWriting.h"

#include <algorithm>
#include <optional>

namespace annotate {

namespace {

constexpr std::size_t globalIdOfSet = 0;

/// Where a statement of the kind has properties; nothing if it has none.
std::optional<std::size_t> placeOfProperties(StatementKind kind) {
    switch (kind) {
    case StatementKind::PropertySet:
        return membersOfSet;
    case StatementKind::ComplexProperty:
        return 3;
    case StatementKind::MaterialProperties:
    case StatementKind::ProfileProperties:
        return 2;
    case StatementKind::ExtendedMaterialProperties:
        return 1;
    default:
        return std::nullopt;
    }
}

/// The GlobalId of a set that is made of the one that is named.
std::string setId(const std::string& origin, const std::string& key, const std::string& ownerId) {
    return globalIdOf(std::string("set\n").append(origin).append("\n").append(key).append(ownerId));
}

} // namespace

void SetEditor::edit(std::uint64_t set, const std::vector<SetMember>& members) {
    std::vector<SetMember> others;
    for (const SetMember& member : members) {
        const FoundStatement* const present = finder.find(member.replaced);
        if (present != nullptr && present->keyword == member.property.keyword && countUses(present->id) == 1) {
            replace(*present, member.property.parameters);
        } else {
            others.push_back(member);
        }
    }
    if (!others.empty()) {
        const FoundStatement& statement = finder.get(set);
        replace(statement, withMembers(statement, others).text());
    }
}

std::uint64_t SetEditor::variantOf(std::uint64_t set, const std::string& key, const std::vector<SetMember>& members,
                                   const std::string& ownerId) {
    std::uint64_t& variant = variants[{set, key}];
    if (variant == 0) {
        const FoundStatement& original = finder.get(set);
        StatementParts parts = withMembers(original, members);
        parts.set(globalIdOfSet, setId(original.parts[globalIdOfSet], key, ownerId));
        variant = added.add(original.keyword, parts.text());
    }
    return variant;
}

std::uint64_t SetEditor::makeSet(const std::string& name, const std::string& ownerHistory, const std::string& key,
                                 const std::vector<SetMember>& members, const std::string& ownerId) {
    std::vector<std::uint64_t> ids;
    ids.reserve(members.size());
    for (const auto& [property, replaced] : members) {
        ids.push_back(added.addOnce(property.keyword, property.parameters));
    }
    return added.add("IFCPROPERTYSET", setId(name, key, ownerId) + ',' + ownerHistory + ',' + stepString(name) + ",$," +
                                           stepReferences(ids));
}

void SetEditor::replace(const FoundStatement& statement, std::string_view parameters) {
    replacements[statement.position] = {statement.end, statementText(statement.id, statement.keyword, parameters)};
}

Replacements SetEditor::takeReplacements() {
    if (!added.getText().empty()) {
        replacements[finder.getDataEnd()] = {finder.getDataEnd(), added.getText()};
    }
    return std::move(replacements);
}

/// How many times the properties of anything refer to the property.
std::size_t SetEditor::countUses(std::uint64_t property) {
    if (uses.empty()) {
        statements.forEach([this](std::uint64_t id, StatementKind kind) {
            if (const auto place = placeOfProperties(kind)) {
                for (const std::uint64_t member : StepParameters(statements.find(id).text)[*place].references()) {
                    ++uses[member];
                }
            }
        });
    }
    return uses[property];
}

StatementParts SetEditor::withMembers(const FoundStatement& set, const std::vector<SetMember>& members) {
    StatementParts parts = set.parts;
    std::vector<std::uint64_t> ids = referencesIn(parts[membersOfSet]);
    for (const auto& [property, replaced] : members) {
        const std::uint64_t id = added.addOnce(property.keyword, property.parameters);
        const auto place = std::find(ids.begin(), ids.end(), replaced);
        if (place == ids.end()) {
            ids.push_back(id);
        } else {
            *place = id;
            std::erase(ids, replaced); // a set may name a member twice
        }
    }
    parts.set(membersOfSet, stepReferences(ids));
    return parts;
}

} // namespace annotate

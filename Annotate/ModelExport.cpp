#include "Annotate/ModelExport.h"

#include "Annotate/Arguments.h"
#include "Annotate/AsciiCase.h"
#include "Annotate/ExportTargets.h"
#include "Annotate/ExportedProperty.h"
#include "Annotate/SetEditor.h"
#include "Annotate/StepParameters.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace annotate {

namespace {

using Ids = std::vector<std::uint64_t>;

/// What the edits of an object make of a set.
struct Content {
    std::string key; ///< Equal for equal contents.
    std::vector<SetMember> members;
};

using ContentOfObjects = std::map<std::uint64_t, Content>;

/// What assigns sets: a relation to its objects, or a type to itself.
struct Holder {
    const FoundStatement* statement = nullptr;
    bool isType = false;
    Ids objects;
    Ids sets;
    bool isChanged = false;
};

// The places of parameters.
constexpr std::size_t globalId = 0;
constexpr std::size_t ownerHistory = 1;
constexpr std::size_t relatedObjects = 4;
constexpr std::size_t assignedSets = 5; // of a relation as of a type

std::string reference(std::uint64_t id) {
    return '#' + std::to_string(id);
}

bool isSame(const ExportedProperty& property, const ModelStatements::Statement& statement) {
    return equalsInAnyCase(property.keyword, statement.statementClass->name) &&
           property.parameters == StatementParts(statement.text).text();
}

class Exporter {
public:
    Exporter(const ModelDetails& modelDetails, const ExportTargets& exportTargets, const StatementFinder& found)
        : details(modelDetails),
          targets(exportTargets),
          finder(found),
          properties(versionOf(found.getSchema()), modelDetails.getStatements(), modelDetails.getUnits()),
          sets(modelDetails.getStatements(), found) {}

    ModelExport run() {
        makeHolders();
        for (const auto& [set, ofObjects] : targets.sets) {
            if (ContentOfObjects made = contentsOf(ofObjects, set); !made.empty()) {
                contents.emplace(set, std::move(made));
            }
        }
        editSharedAlike();
        for (Holder& holder : holders) {
            divide(holder);
        }
        for (const auto& [name, ofObjects] : targets.newSets) {
            addSets(name, contentsOf(ofObjects, 0));
        }
        for (const Holder& holder : holders) {
            if (holder.isChanged) {
                sets.replace(*holder.statement, parametersOf(holder, holder.objects, holder.sets).text());
            }
        }
        result.replacements = sets.takeReplacements();
        result.objects = exportedObjects.size();
        result.remarks = properties.getSentences();
        return std::move(result);
    }

private:
    void makeHolders() {
        for (const FoundStatement& relation : finder.getAssignments()) {
            holders.push_back({&relation, false, referencesIn(relation.parts[relatedObjects]),
                               referencesIn(relation.parts[assignedSets])});
        }
        for (const std::uint64_t type : targets.types) {
            const FoundStatement& statement = finder.get(type);
            typeHolders.emplace(type, holders.size());
            holders.push_back({&statement, true, {type}, referencesIn(statement.parts[assignedSets])});
        }
    }

    /// Without the objects of which nothing has to be changed. The set is 0 if it is a new one.
    ContentOfObjects contentsOf(const ExportTargets::EntriesOfObjects& ofObjects, std::uint64_t set) {
        const ModelStatements& statements = details.getStatements();
        ContentOfObjects made;
        for (const auto& [object, entries] : ofObjects) {
            Content content;
            for (const EditIndex::Entry* const entry : entries) {
                const std::uint64_t present = set == 0 ? 0 : memberOf(statements, set, entry->edit.property);
                const auto statement = statements.find(present);
                if (auto property = properties.exported(entry->edit, statement)) {
                    ++result.properties;
                    exportedObjects.insert(object);
                    if (!isSame(*property, statement)) {
                        content.key += property->keyword + '(' + property->parameters + ")\n";
                        content.members.push_back({*std::move(property), present});
                    }
                }
            }
            if (!content.members.empty()) {
                made.emplace(object, std::move(content));
            }
        }
        return made;
    }

    /// Edits the sets in place that all of their objects have the same edits in.
    void editSharedAlike() {
        std::unordered_map<std::uint64_t, Ids> users;
        for (const Holder& holder : holders) {
            for (const std::uint64_t set : holder.sets) {
                users[set].insert(users[set].end(), holder.objects.begin(), holder.objects.end());
            }
        }
        std::erase_if(contents, [&](const auto& each) {
            const std::uint64_t set = each.first;
            const ContentOfObjects& ofObjects = each.second;
            const Content& first = ofObjects.begin()->second;
            const bool areAlike = std::all_of(users[set].begin(), users[set].end(), [&](std::uint64_t object) {
                const auto content = ofObjects.find(object);
                return content != ofObjects.end() && content->second.key == first.key;
            });
            if (areAlike) {
                sets.edit(set, first.members);
            }
            return areAlike;
        });
    }

    /// Null if the object keeps the set as it is.
    const Content* findContent(std::uint64_t set, std::uint64_t object) const {
        const auto ofSet = contents.find(set);
        if (ofSet == contents.end()) {
            return nullptr;
        }
        const auto found = ofSet->second.find(object);
        return found == ofSet->second.end() ? nullptr : &found->second;
    }

    Ids variantsFor(const Holder& holder, std::uint64_t object) {
        Ids assigned = holder.sets;
        for (std::uint64_t& set : assigned) {
            const Content* const content = findContent(set, object);
            set = content == nullptr ? set : sets.variantOf(set, content->key, content->members, idOf(object));
        }
        return assigned;
    }

    /// Leaves the holder the objects that keep its sets, or if there are none the first with its edits, and gives the
    /// others relations of their own, one for those that are alike.
    void divide(Holder& holder) {
        std::vector<std::pair<Ids, Ids>> groups; // sets, and the objects that have them
        std::map<Ids, std::size_t> places;
        for (const std::uint64_t object : holder.objects) {
            Ids assigned = variantsFor(holder, object);
            const auto [place, isNew] = places.try_emplace(assigned, groups.size());
            if (isNew) {
                groups.emplace_back(std::move(assigned), Ids());
            }
            groups[place->second].second.push_back(object);
        }
        const auto unchanged =
            std::find_if(groups.begin(), groups.end(), [&](const auto& each) { return each.first == holder.sets; });
        if (unchanged != groups.end()) {
            std::iter_swap(groups.begin(), unchanged);
        }
        for (std::size_t place = 1; place < groups.size(); ++place) {
            const auto& [assigned, objects] = groups[place];
            StatementParts parts = parametersOf(holder, objects, assigned);
            parts.set(globalId, relationId(holder.statement->parts[globalId] + idOf(objects.front())));
            sets.getNew().add(holder.statement->keyword, parts.text());
        }
        if (!groups.empty() && (groups.size() > 1 || groups.front().first != holder.sets)) {
            std::tie(holder.sets, holder.objects) = groups.front();
            holder.isChanged = true;
        }
    }

    static std::string relationId(const std::string& content) { return globalIdOf("relation\n" + content); }

    std::string idOf(std::uint64_t object) const {
        const auto found = targets.objects.find(object);
        return found == targets.objects.end() ? std::string() : found->second->globalId;
    }

    static StatementParts parametersOf(const Holder& holder, const Ids& objects, const Ids& assigned) {
        StatementParts parts = holder.statement->parts;
        if (holder.isType) {
            parts.set(assignedSets, stepReferences(assigned));
            return parts;
        }
        parts.set(relatedObjects, stepReferences(objects));
        parts.set(assignedSets, assigned.size() == 1 ? reference(assigned.front())
                                                     : "IFCPROPERTYSETDEFINITIONSET(" + stepReferences(assigned) + ')');
        return parts;
    }

    /// The owner history of the object, or another one if it has none where IFC2X3 demands one.
    std::string ownerOf(const FoundStatement& object) const {
        const std::string& own = object.parts[ownerHistory];
        const bool isDemanded = versionOf(finder.getSchema()) == IfcVersion::Ifc2x3;
        return own == "$" && isDemanded && finder.getOwnerHistory() != 0 ? reference(finder.getOwnerHistory()) : own;
    }

    /// New sets of that name, one for the objects that are alike; but types share none.
    void addSets(const std::string& name, const ContentOfObjects& ofObjects) {
        std::map<std::string, Ids> alike;
        for (const auto& [object, content] : ofObjects) {
            alike[content.key + (findType(object) == nullptr ? "" : idOf(object))].push_back(object);
        }
        for (const auto& [key, objects] : alike) {
            const std::string owner = ownerOf(finder.get(objects.front()));
            const std::vector<SetMember>& members = ofObjects.at(objects.front()).members;
            const std::uint64_t set = sets.makeSet(name, owner, key, members, idOf(objects.front()));
            if (Holder* const type = findType(objects.front())) {
                type->sets.push_back(set);
                type->isChanged = true;
            } else {
                std::string relation = relationId(std::string(name).append("\n").append(key) + idOf(objects.front()));
                relation.append(",").append(owner).append(",$,$,").append(stepReferences(objects));
                sets.getNew().add("IFCRELDEFINESBYPROPERTIES", relation.append(",").append(reference(set)));
            }
        }
    }

    Holder* findType(std::uint64_t object) {
        const auto found = typeHolders.find(object);
        return found == typeHolders.end() ? nullptr : &holders[found->second];
    }

    const ModelDetails& details;
    const ExportTargets& targets;
    const StatementFinder& finder;
    PropertyExporter properties;
    SetEditor sets;
    std::vector<Holder> holders;
    std::unordered_map<std::uint64_t, std::size_t> typeHolders;
    std::map<std::uint64_t, ContentOfObjects> contents; ///< By sets.
    std::set<std::uint64_t> exportedObjects;
    ModelExport result;
};

} // namespace

ModelExport ModelExport::of(const ModelDetails& details, const EditIndex& edits) {
    const ExportTargets targets = ExportTargets::of(details, edits);
    ModelExport made;
    if (!targets.areNone()) {
        const auto finder = targets.findStatements(details);
        made = Exporter(details, targets, *finder).run();
    }
    made.vanished = targets.vanished;
    return made;
}

} // namespace annotate

#include "Annotate/ExportTargets.h"

#include "Annotate/StepParameters.h"
#include "Annotate/StepValue.h"
#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <unordered_set>

namespace annotate {

namespace {

using Ids = std::vector<std::uint64_t>;

constexpr std::size_t nameOfSet = 2;

Ids membersOf(const ModelStatements& statements, std::uint64_t set) {
    return StepParameters(statements.find(set).text)[membersOfSet].references();
}

/// The set of that name that the object has of its own, one with the property if there is such a one; 0 if it has none.
std::uint64_t setFor(const ModelDetails& details, const ModelObject& object, const orv::host::PropertyEdit& edit) {
    const ModelStatements& statements = details.getStatements();
    std::uint64_t first = 0;
    for (const std::uint64_t id : details.assignedSets(object)) {
        const auto statement = statements.find(id);
        if (statement.statementClass->kind == StatementKind::PropertySet &&
            textIn(StepParameters(statement.text)[nameOfSet]) == edit.set) {
            if (memberOf(statements, id, edit.property) != 0) {
                return id;
            }
            first = first == 0 ? id : first;
        }
    }
    return first;
}

} // namespace

ExportTargets ExportTargets::of(const ModelDetails& details, const EditIndex& edits) {
    ExportTargets targets;
    for (const EditIndex::Entry& entry : edits.getEntries()) {
        if (entry.edit.form == orv::host::PropertyEdit::Form::Unset) {
            continue;
        }
        const ModelObject* const object = details.getModel().find(entry.id);
        if (object == nullptr) {
            ++targets.vanished;
            continue;
        }
        targets.objects.emplace(object->id, object);
        const std::uint64_t set = setFor(details, *object, entry.edit);
        (set == 0 ? targets.newSets[entry.edit.set] : targets.sets[set])[object->id].push_back(&entry);
    }
    static const orv::fc::IfcClass& typeObject = *orv::fc::IfcClass::find("IfcTypeObject");
    for (const ModelObject& object : details.getModel().getObjects()) {
        const Ids assigned = typeObject.includes(*object.ifcClass) ? details.assignedSets(object) : Ids();
        const bool hasTarget = std::any_of(assigned.begin(), assigned.end(),
                                           [&](std::uint64_t set) { return targets.sets.contains(set); });
        if (hasTarget || (typeObject.includes(*object.ifcClass) && targets.objects.contains(object.id))) {
            targets.types.push_back(object.id);
        }
    }
    return targets;
}

std::unique_ptr<const StatementFinder> ExportTargets::findStatements(const ModelDetails& details) const {
    std::unordered_set<std::uint64_t> wanted(types.begin(), types.end());
    std::unordered_set<std::uint64_t> wantedSets;
    for (const auto& [set, ofObjects] : sets) {
        const Ids members = membersOf(details.getStatements(), set);
        wanted.insert(members.begin(), members.end());
        wanted.insert(set);
        wantedSets.insert(set);
    }
    for (const auto& [name, ofObjects] : newSets) {
        std::for_each(ofObjects.begin(), ofObjects.end(), [&](const auto& each) { wanted.insert(each.first); });
    }
    auto finder = std::make_unique<StatementFinder>(std::move(wanted), std::move(wantedSets));
    readModelFile(details.getPath(), *finder);
    return finder;
}

std::uint64_t memberOf(const ModelStatements& statements, std::uint64_t set, const std::string& name) {
    const Ids members = membersOf(statements, set);
    const auto found = std::find_if(members.begin(), members.end(), [&](std::uint64_t id) {
        const auto statement = statements.find(id);
        return !statement.text.empty() && textIn(StepParameters(statement.text)[0]) == name;
    });
    return found == members.end() ? 0 : *found;
}

} // namespace annotate

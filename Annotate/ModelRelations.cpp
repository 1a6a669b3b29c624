#include "Annotate/ModelRelations.h"

#include "Annotate/StepParameters.h"

#include <algorithm>

namespace annotate {

namespace {

using Kind = StatementKind;

constexpr auto isOfLesserNumber = [](const auto& link, std::uint64_t number) { return link.from < number; };

/// Which of the parents of an object counts; the first of them does.
constexpr int rank(StatementKind kind) {
    constexpr Kind ranks[] = {Kind::Contained, Kind::Aggregates, Kind::Nests, Kind::Fills, Kind::Voids, Kind::Projects};
    return static_cast<int>(std::find(std::begin(ranks), std::end(ranks), kind) - std::begin(ranks));
}

} // namespace

void ModelRelations::add(StatementKind kind, const StepParameters& parameters) {
    // The parameters of a relation begin with its GlobalId, its OwnerHistory, its Name and its Description.
    const StepParameter fifth = parameters[4];
    const StepParameter sixth = parameters[5];
    switch (kind) {
    case Kind::DefinesByProperties:
        for (const std::uint64_t object : fifth.references()) {
            addDefinitions(object, sixth.references());
        }
        break;
    case Kind::DefinesByType:
        addEach(types, fifth.references(), sixth.reference(), kind);
        break;
    case Kind::DefinesByObject:
        addEach(declarations, fifth.references(), sixth.reference(), kind);
        break;
    case Kind::AssociatesMaterial:
        addEach(materials, fifth.references(), sixth.reference(), kind);
        break;
    case Kind::Contained:
        addEach(parents, fifth.references(), sixth.reference(), kind);
        break;
    case Kind::Aggregates:
    case Kind::Nests:
    case Kind::Fills:
    case Kind::Voids:
    case Kind::Projects:
        addEach(parents, sixth.references(), fifth.reference(), kind);
        break;
    default:
        break;
    }
}

void ModelRelations::addDefinitions(std::uint64_t object, const std::vector<std::uint64_t>& added) {
    for (const std::uint64_t definition : added) {
        definitions.push_back({object, definition, Kind::DefinesByProperties});
    }
}

void ModelRelations::sort() {
    for (Links* const links : {&definitions, &types, &declarations, &materials, &parents}) {
        std::stable_sort(links->begin(), links->end(), [](const Link& a, const Link& b) {
            return a.from != b.from ? a.from < b.from : rank(a.kind) < rank(b.kind);
        });
    }
}

std::vector<std::uint64_t> ModelRelations::definitionsOf(std::uint64_t object) const {
    std::vector<std::uint64_t> found;
    auto link = std::lower_bound(definitions.begin(), definitions.end(), object, isOfLesserNumber);
    for (; link != definitions.end() && link->from == object; ++link) {
        const bool isNew = std::find(found.begin(), found.end(), link->to) == found.end();
        if (isNew) {
            found.push_back(link->to);
        }
    }
    return found;
}

std::uint64_t ModelRelations::typeOf(std::uint64_t object) const {
    return firstOf(types, object);
}

std::uint64_t ModelRelations::declarationOf(std::uint64_t object) const {
    return firstOf(declarations, object);
}

std::uint64_t ModelRelations::materialOf(std::uint64_t object) const {
    return firstOf(materials, object);
}

std::uint64_t ModelRelations::parentOf(std::uint64_t object) const {
    return firstOf(parents, object);
}

void ModelRelations::addEach(Links& links, const std::vector<std::uint64_t>& from, std::uint64_t to, Kind kind) {
    for (const std::uint64_t each : from) {
        links.push_back({each, to, kind});
    }
}

std::uint64_t ModelRelations::firstOf(const Links& links, std::uint64_t from) {
    const auto link = std::lower_bound(links.begin(), links.end(), from, isOfLesserNumber);
    return link == links.end() || link->from != from ? 0 : link->to;
}

} // namespace annotate

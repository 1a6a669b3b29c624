#include "Annotate/StatementFinder.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/ModelStatements.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepScanner.h"

#include <algorithm>

namespace annotate {

void StatementFinder::take(StepScanner& scanner, const ModelInstance& instance) {
    const std::uint64_t id = instanceNumber(scanner, instance);
    const std::uintmax_t start = scanner.position();
    scanner.skipStatement();
    highestId = std::max(highestId, id);
    if (ownerHistory == 0 && equalsInAnyCase(instance.keyword, "IFCOWNERHISTORY")) {
        ownerHistory = id;
    }
    const StatementClass* const statementClass = instance.isReferring ? nullptr : StatementClass::find(instance);
    const bool isAssignment = statementClass != nullptr && statementClass->kind == StatementKind::DefinesByProperties;
    if (!isAssignment && !wanted.contains(id)) {
        return;
    }
    const std::string_view text = scanner.textSince(start);
    FoundStatement statement{id, instance.position, scanner.position(), std::string(instance.keyword),
                             StatementParts(text)};
    if (!isAssignment) {
        found.insert_or_assign(id, std::move(statement));
        return;
    }
    const std::vector<std::uint64_t> assigned = StepParameters(text)[5].references();
    if (std::any_of(assigned.begin(), assigned.end(), [this](std::uint64_t set) { return sets.contains(set); })) {
        assignments.push_back(std::move(statement));
    }
}

const FoundStatement* StatementFinder::find(std::uint64_t id) const {
    const auto place = found.find(id);
    return place == found.end() ? nullptr : &place->second;
}

const FoundStatement& StatementFinder::get(std::uint64_t id) const {
    const FoundStatement* const present = find(id);
    if (present == nullptr) {
        throw changedMeanwhile();
    }
    return *present;
}

RequestError changedMeanwhile() {
    return RequestError("The model was changed while it was exported. Try again. Nothing was exported.");
}

} // namespace annotate

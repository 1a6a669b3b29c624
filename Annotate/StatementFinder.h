#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/ModelFile.h"
#include "Annotate/StepWriting.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace annotate {

/// A statement and where it stands in the file.
struct FoundStatement {
    std::uint64_t id = 0;
    std::uintmax_t position = 0;
    std::uintmax_t end = 0;
    std::string keyword;
    StatementParts parts;
};

/// Finds the statements that an export changes or needs, where they stand, and where new ones come.
class StatementFinder : public InstanceReader {
public:
    /// The instances wanted, and the sets whose assignments to objects are.
    StatementFinder(std::unordered_set<std::uint64_t> wantedIds, std::unordered_set<std::uint64_t> assignedSets)
        : wanted(std::move(wantedIds)), sets(std::move(assignedSets)) {}

    void take(StepScanner& scanner, const ModelInstance& instance) override;
    void takeSchema(std::string_view name) override { schema = name; }
    void takeDataEnd(std::uintmax_t position) override { dataEnd = position; }

    const std::string& getSchema() const { return schema; }

    /// The end of the last section of data.
    std::uintmax_t getDataEnd() const { return dataEnd; }

    std::uint64_t getHighestId() const { return highestId; }

    /// The first IfcOwnerHistory; 0 if there is none.
    std::uint64_t getOwnerHistory() const { return ownerHistory; }

    /// Null if there is none.
    const FoundStatement* find(std::uint64_t id) const;

    /// One that was there when the details were read. Throws RequestError if it isn't any more.
    const FoundStatement& get(std::uint64_t id) const;

    /// Relations that assign the sets, in the order of the file.
    const std::vector<FoundStatement>& getAssignments() const { return assignments; }

private:
    std::unordered_set<std::uint64_t> wanted;
    std::unordered_set<std::uint64_t> sets;
    std::unordered_map<std::uint64_t, FoundStatement> found;
    std::vector<FoundStatement> assignments;
    std::string schema;
    std::uintmax_t dataEnd = 0;
    std::uint64_t highestId = 0;
    std::uint64_t ownerHistory = 0;
};

/// That the model was changed between two readings of an export.
RequestError changedMeanwhile();

} // namespace annotate

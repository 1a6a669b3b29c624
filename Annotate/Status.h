#pragma once

#include "Annotate/Additions.h"
#include "Annotate/BarChart.h"
#include "Annotate/Table.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace annotate {

/// What users added to a model, at a glance.
class Status {
public:
    /// The additions outlive it.
    explicit Status(const Additions& additionsToModel);

    Counts totals() const;

    /// In the order of the model, and then those in no storey and on objects that aren't in it.
    Counts openByStorey() const;

    /// The most first.
    Counts openByClass() const;

    /// For each object that the model no longer has its GlobalId, and how many notes and edits are on it.
    std::vector<Row> vanishedRows() const;

    /// For each edit to what the model has meanwhile: GlobalId, property set, property, value and author.
    const std::vector<Row>& caughtUpRows() const { return caughtUp; }

private:
    struct Vanished {
        std::size_t notes = 0;
        std::size_t edits = 0;
    };

    void take(const AddedNote& added);
    void take(const AddedEdit& added);
    void takeAuthor(const std::string& author);

    const Additions* additions;
    std::size_t openNotes = 0;
    std::size_t resolvedNotes = 0;
    std::size_t openOnVanished = 0;
    std::set<std::string> authors;
    std::map<const ModelObject*, std::size_t> storeys; ///< Open notes; those in none with null.
    std::map<std::string, std::size_t> classes;
    std::map<std::string, Vanished> vanished;
    std::vector<Row> caughtUp;
};

/// How a storey is named, which is null where there is none.
std::string storeyName(const ModelObject* storey);

} // namespace annotate

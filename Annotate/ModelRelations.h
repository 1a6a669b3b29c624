#pragma once

#include "Annotate/ModelStatements.h"

#include <cstdint>
#include <deque>
#include <vector>

namespace annotate {

class StepParameters;

/// Which instances of a model belong together. An instance is named by its number; 0 is none.
class ModelRelations {
public:
    /// Whether the kind is one of relations.
    static bool takes(StatementKind kind) { return StatementKind::Aggregates <= kind && kind <= StatementKind::Voids; }

    /// Takes a relation of the kind.
    void add(StatementKind kind, const StepParameters& parameters);

    void addDefinitions(std::uint64_t object, const std::vector<std::uint64_t>& added);

    /// To be called after the last one was added.
    void sort();

    /// The sets of properties and of quantities that are assigned to the object itself, in the order of the file.
    std::vector<std::uint64_t> definitionsOf(std::uint64_t object) const;

    std::uint64_t typeOf(std::uint64_t object) const;

    /// The object that declares what the object has, as a part of a type does for the parts of the type's occurrences.
    std::uint64_t declarationOf(std::uint64_t object) const;

    /// What the object is made of, in whatever form: layers, a list, one material.
    std::uint64_t materialOf(std::uint64_t object) const;

    /// The place that contains the object, else the whole that it is a part of, or the one that it fills or voids.
    std::uint64_t parentOf(std::uint64_t object) const;

private:
    struct Link {
        std::uint64_t from;
        std::uint64_t to;
        StatementKind kind;
    };
    using Links = std::deque<Link>;

    static void addEach(Links& links, const std::vector<std::uint64_t>& from, std::uint64_t to, StatementKind kind);
    static std::uint64_t firstOf(const Links& links, std::uint64_t from);

    Links definitions;
    Links types;
    Links declarations;
    Links materials;
    Links parents;
};

} // namespace annotate

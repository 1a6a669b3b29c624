#pragma once

#include "Annotate/MergedValues.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace annotate {

/// The model's sets of objects, each read when an object is asked for first. The details outlive it.
class SetsOfObjects {
public:
    explicit SetsOfObjects(const ModelDetails& modelDetails) : details(&modelDetails) {}

    /// The property of the object with the edit.
    MergedProperty find(const ModelObject& object, const HeldEdit& edit, std::string_view set,
                        std::string_view property);

    /// The property that was edited. Without the model's if the object is null, as the model no longer has it.
    MergedProperty find(const ModelObject* object, const EditIndex::Entry& entry);

    /// Those of the objects that were asked for.
    const std::unordered_map<const ModelObject*, std::vector<ModelSet>>& getSets() const { return sets; }

private:
    const ModelDetails* details;
    std::unordered_map<const ModelObject*, std::vector<ModelSet>> sets;
};

} // namespace annotate

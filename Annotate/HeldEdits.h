#pragma once

#include "Annotate/EditIndex.h"

#include <string>
#include <string_view>
#include <vector>

namespace annotate {

class ModelDetails;
struct ModelObject;

/// An edit on an object, or on what it has properties from.
struct HeldEdit {
    const EditIndex::Entry* entry = nullptr; ///< Null if there is none; never one that unsets.
    std::string_view from;                   ///< As that of a ModelProperty.
};

/// The nearest edit of each property that has one: on the object itself, on what declares it or on its type. It holds
/// unless the model has a value from something nearer.
std::vector<HeldEdit> editsFor(const ModelObject& object, const ModelDetails& details, const EditIndex& edits);

/// That of the property.
HeldEdit editFor(const ModelObject& object, const ModelDetails& details, const EditIndex& edits, const std::string& set,
                 const std::string& property);

} // namespace annotate

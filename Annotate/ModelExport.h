#pragma once

#include "Annotate/Replacements.h"

#include <cstddef>
#include <set>
#include <string>

namespace annotate {

class EditIndex;
class ModelDetails;

/// The changes that put edits into a model's file.
struct ModelExport {
    Replacements replacements;
    std::size_t properties = 0;    ///< How many have the values of edits then, those that had them before among them.
    std::size_t objects = 0;       ///< How many have such properties.
    std::size_t vanished = 0;      ///< Edits of objects that the model doesn't have.
    std::set<std::string> remarks; ///< Sentences on what isn't exported as it is.

    /// Where an object has a set of the name, it has that set with the edits in it afterwards, and others that share
    /// the set keep it. Otherwise it gets a new set, shared by those with the same edits. Reads the model's file again.
    /// Throws RequestError if that has changed since the details were read.
    static ModelExport of(const ModelDetails& details, const EditIndex& edits);
};

} // namespace annotate

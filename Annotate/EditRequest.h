#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/EditIndex.h"
#include "Annotate/Filter.h"
#include "Annotate/Model.h"
#include "Host/PropertyEdits.h"

#include <functional>
#include <string>
#include <vector>

namespace annotate {

/// The objects that a command is on.
struct RequestedObjects {
    std::vector<orv::Guid> ids;
    std::vector<std::string> refusals; ///< Why, for each one that can have no edits.
};

/// What a command on properties is given: the object or the chosen ones, the property, and what else there is.
struct EditRequest {
    std::string globalId; ///< Empty if filters choose the objects.
    std::string set;
    std::string property;
    std::vector<std::string> values;

    /// Throws UsageError if the words are too few, or too many where the command takes no values or a single one.
    EditRequest(const Arguments& arguments, std::size_t minimumValues, std::size_t maximumValues);

    /// Throws RequestError if there are none in the model.
    RequestedObjects objectsIn(const ModelDetails& details, const Arguments& arguments) const;
};

/// The edits of a command on several objects.
struct RequestedEdits {
    std::vector<orv::host::ObjectEdit> edits;
    std::vector<std::string> refusals; ///< Why, for each object that can have no edits.

    /// If set, called for each edit with those that are stored, once no other annotate can change them.
    std::function<void(orv::host::ObjectEdit&, const EditIndex&)> complete;
};

/// Stores the edits of the command and makes them, all or none, and says so. With --keep-going those that can be made
/// are, and RequestError tells afterwards that others weren't.
void makeEdits(const Arguments& arguments, const Model& model, RequestedEdits requested);

} // namespace annotate

#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Filter.h"
#include "Annotate/Model.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <vector>

namespace annotate {

/// What a command on properties is given: the object or the chosen ones, the property, and what else there is.
struct EditRequest {
    std::string globalId; ///< Empty if filters choose the objects.
    std::string set;
    std::string property;
    std::vector<std::string> values;

    /// Throws UsageError if the words are too few, or too many where the command takes no values or a single one.
    EditRequest(const Arguments& arguments, std::size_t minimumValues, std::size_t maximumValues);

    /// The ids of the objects. Throws RequestError if there are none in the model.
    std::vector<orv::Guid> objectsIn(const ModelDetails& details, const Arguments& arguments) const;
};

/// Stores the edits of the command and makes them, all or none, and says so. With --keep-going those that can be made
/// are, and RequestError tells afterwards that others weren't.
void makeEdits(const Arguments& arguments, const Model& model, std::vector<orv::host::ObjectEdit> edits);

} // namespace annotate

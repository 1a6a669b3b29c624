#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Model.h"

#include <optional>
#include <string>

namespace annotate {

/// The object of the model that the user names by its GlobalId, or like #123 by the number of its instance in the file.
/// Throws RequestError if there is none.
const ModelObject& objectNamed(const Arguments& arguments, const Model& model, const std::string& name);

/// The same for one that notes and edits are to be on, by its id. Throws RequestError, with the reason, if it can't
/// have any.
orv::Guid idNamed(const Arguments& arguments, const Model& model, const std::string& name);

/// The id under which the object has notes and edits; none if its GlobalId isn't valid, or is that of an earlier
/// object.
std::optional<orv::Guid> idOf(const Model& model, const ModelObject& object);

/// Why the object, which has no such id, can have no notes and edits; in a sentence.
std::string whyWithoutId(const Model& model, const ModelObject& object);

/// Its GlobalId, or its number if it has none of its own; objectNamed finds the object by either.
std::string nameFor(const Model& model, const ModelObject& object);

/// Whether the name is a number like #123.
bool isInstanceNumber(const std::string& name);

/// Whether it is the number of the object.
bool isNumberOf(const std::string& name, const ModelObject& object);

} // namespace annotate

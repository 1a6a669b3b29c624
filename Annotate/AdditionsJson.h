#pragma once

#include "Annotate/Model.h"
#include "Annotate/Notes.h"
#include "Host/PropertyEdits.h"
#include "IfcVersionMapping/Def.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace annotate {

// What users and programs read of a model and its additions in JSON. What isn't known is null.

using Json = nlohmann::ordered_json;

Json orNull(const std::string& text);
Json orNull(const std::optional<Time>& time);

/// One value; all of an enumeration or a list; the bounds by their names; or the rows of a table, each a pair. The
/// values are in the order of those of a ModelProperty.
Json valueJson(orv::ifc::def::xml::PropertyKind kind, const std::vector<orv::object::PropertyValue>& values);
Json valueJson(const orv::host::PropertyEdit& edit);

/// The object is null if the model no longer has it.
Json objectJson(const std::string& globalId, const ModelObject* object);
Json noteJson(std::int64_t number, const Note& note, const ModelObject* object);

/// With what isn't UTF-8 as U+FFFD, and a line feed at the end.
std::string jsonText(const Json& json);

} // namespace annotate

#pragma once

#include "FoundationClasses/IfcClass.h"

#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// The names of IfcObjectDefinition and all classes below it. They live as long as the process.
std::vector<std::string_view> objectClassNames();

/// The one of them with the name, in any letter case. Throws RequestError, with the nearest names, if there is none.
const orv::fc::IfcClass& objectClassNamed(const std::string& name);

} // namespace annotate

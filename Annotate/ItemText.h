#pragma once

#include "Object/PropertyValue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

// Several values in one text, with ';' between them: A;B, and A=B;C=D for the rows of a table. A ';' or a backslash
// within a value has a backslash before it, and in a table a '=' as well. Any other backslash is read as it stands.

/// The values, those of rows defining and defined in turn.
std::string itemsText(const std::vector<orv::object::PropertyValue>& values, bool areRows);

/// The texts of the values; there is one at least.
std::vector<std::string> itemsIn(std::string_view text);

/// Those of rows, defining and defined in turn; nothing if one of the rows hasn't both.
std::optional<std::vector<std::string>> rowItemsIn(std::string_view text);

} // namespace annotate

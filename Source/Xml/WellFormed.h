#pragma once

#include <initializer_list>
#include <string_view>

namespace orv::xml {

/// Whether the pieces, in UTF-8, are a well-formed document together.
bool isWellFormed(std::initializer_list<std::string_view> document);

} // namespace orv::xml

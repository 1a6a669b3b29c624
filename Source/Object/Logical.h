#pragma once

#include <cstdint>

namespace orv::object {

/// The three-valued logical of EXPRESS (ISO 10303-11), as IfcLogical uses it.
enum class Logical : std::int32_t { False, True, Unknown };

} // namespace orv::object

#pragma once

#include "Host/PropertyEdits.h"

#include <string_view>

namespace orv::host {

/// Reads the edit that the line tells into edit, whose strings are reused: quicker than editOf for many. Returns
/// whether the line tells one; if not, edit holds parts of both.
bool readEdit(std::string_view line, PropertyEdit& edit);

/// Whether the edit has as many values as its form takes: one, three bounds, whole rows of a table, one at least of a
/// list or an enumeration, none if it unsets.
bool hasValuesOfItsForm(const PropertyEdit& edit);

} // namespace orv::host

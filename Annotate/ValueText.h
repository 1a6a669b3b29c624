#pragma once

#include "Object/PropertyValue.h"

#include <string>

namespace annotate {

/// The text of a value: the shortest of a number that reads back as the same, without an exponent from 1e-5 up to 1e15;
/// true, false or unknown; empty for the empty value.
std::string valueText(const orv::object::PropertyValue& value);

/// Whether it is held as a number, not as the text of one.
bool isNumber(const orv::object::PropertyValue& value);

/// With a blank between them, if neither is empty.
std::string withUnit(const std::string& text, const std::string& unit);

} // namespace annotate

#pragma once

#include <string>
#include <string_view>

namespace annotate {

/// The text for a page in UTF-8, within an element or a quoted attribute, in HTML or SVG, where it can be nothing but
/// text: no markup, and no control character but line feed and tab. A carriage return before a line feed is left out;
/// the others are shown as their pictures (U+2400 onwards) or, as what is no UTF-8, as U+FFFD.
std::string htmlText(std::string_view text);

} // namespace annotate

#pragma once

#include <string>
#include <string_view>

namespace annotate {

bool isUtf8(std::string_view text);

/// With U+FFFD in the place of NULs and of bytes that aren't UTF-8, which readCsv refuses.
std::string textInUtf8(std::string_view text);

} // namespace annotate

#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace annotate {

struct Replacement {
    std::uintmax_t end = 0; ///< Of the bytes that it takes the place of.
    std::string text;
};

/// What a copy of a file has in place of some of its bytes, by where these begin.
using Replacements = std::map<std::uintmax_t, Replacement>;

} // namespace annotate

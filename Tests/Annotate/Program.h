#pragma once

#include <cstdlib>
#include <string>

namespace annotate {

/// The program that is tried: that of this build, or the one that the variable names, which may run one for another
/// system.
inline std::string program() {
    const char* const named = std::getenv("ANNOTATE_PROGRAM");
    return named == nullptr ? ANNOTATE : named;
}

} // namespace annotate

#pragma once

namespace orv::tests {

/// A locale whose decimal point is a comma.
#ifdef _WIN32
inline constexpr const char* germanLocale = "German";
#else
inline constexpr const char* germanLocale = "de_DE.UTF-8";
#endif

} // namespace orv::tests

#include "Utilities/Beside.h"

#include "Utilities/Digest.h"
#include "Utilities/SystemCalls.h"

#include <string>

namespace orv::utilities {

namespace fs = std::filesystem;

namespace {

/// Whether the unit of UTF-8 or UTF-16 goes on with a character.
bool isWithinCharacter(fs::path::value_type unit) {
    constexpr bool isUtf8 = sizeof(unit) == 1;
    const auto bits = static_cast<unsigned>(unit);
    return isUtf8 ? (bits & 0xc0U) == 0x80U : (bits & 0xfc00U) == 0xdc00U;
}

} // namespace

fs::path resolved(fs::path path) {
    constexpr int maximumLinks = 40;
    fs::path at = path;
    for (int links = 0; links < maximumLinks; ++links) {
        fs::path target;
        if (uninterrupted([&] { return systemCalls.readLink(at, target); }) != done) {
            return at;
        }
        at = at.parent_path() / target;
    }
    return path;
}

fs::path beside(const fs::path& path, std::string_view mark, std::size_t room) {
    constexpr std::size_t maximumName = 255;
    constexpr std::size_t digits = 16;
    auto name = path.filename().native();
    if (name.size() + mark.size() + room <= maximumName) {
        return fs::path(path).concat(mark);
    }
    std::uint64_t digest =
        Digest::of({reinterpret_cast<const char*>(name.data()), name.size() * sizeof(name.front())}).first;
    std::size_t kept = maximumName - mark.size() - room - digits - 1;
    while (kept > 0 && isWithinCharacter(name[kept])) {
        --kept;
    }
    name.resize(kept);
    name += '~';
    for (std::size_t digit = 0; digit < digits; ++digit, digest >>= 4U) {
        name += static_cast<fs::path::value_type>("0123456789abcdef"[digest & 0xfU]);
    }
    return (path.parent_path() / name).concat(mark);
}

} // namespace orv::utilities

#include "Utilities/Beside.h"

#include "Utilities/Digest.h"
#include "Utilities/SystemCalls.h"

#include <cstdint>
#include <string>
#include <type_traits>

namespace orv::utilities {

namespace fs = std::filesystem;

namespace {

constexpr bool isUtf8 = sizeof(fs::path::value_type) == 1; // otherwise UTF-16

/// The unit of a name as a number.
std::uint32_t bitsOf(fs::path::value_type unit) {
    return static_cast<std::make_unsigned_t<fs::path::value_type>>(unit);
}

/// Whether the unit goes on with a character.
bool isWithinCharacter(fs::path::value_type unit) {
    return isUtf8 ? (bitsOf(unit) & 0xc0U) == 0x80U : (bitsOf(unit) & 0xfc00U) == 0xdc00U;
}

std::string bytesOf(const fs::path::string_type& name) {
    std::string bytes;
    for (const auto unit : name) {
        bytes += static_cast<char>(bitsOf(unit) & 0xffU);
        if (!isUtf8) {
            bytes += static_cast<char>(bitsOf(unit) >> 8U);
        }
    }
    return bytes;
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
    std::uint64_t digest = Digest::of(bytesOf(name)).first;
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

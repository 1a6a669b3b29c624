#include "Utilities/Beside.h"

#include "Utilities/Digest.h"
#include "Utilities/SystemCalls.h"

#include <string>

namespace orv::utilities {

namespace fs = std::filesystem;

fs::path resolved(fs::path path) {
    constexpr int maximumLinks = 40;
    fs::path at = path;
    for (int links = 0; links < maximumLinks; ++links) {
        fs::path target;
        if (systemCalls.readLink(at, target) != done) {
            return at;
        }
        at = at.parent_path() / target;
    }
    return path;
}

fs::path beside(const fs::path& path, std::string_view mark, std::size_t room) {
    constexpr std::size_t maximumName = 255;
    constexpr std::size_t digits = 16;
    std::u8string name = path.filename().u8string();
    if (name.size() + mark.size() + room <= maximumName) {
        return fs::path(path).concat(mark);
    }
    std::uint64_t digest = Digest::of(std::string(name.begin(), name.end())).first;
    std::size_t kept = maximumName - mark.size() - room - digits - 1;
    while (kept > 0 && (static_cast<unsigned char>(name[kept]) & 0xc0U) == 0x80U) {
        --kept; // not within a character of UTF-8
    }
    name.resize(kept);
    name += u8'~';
    for (std::size_t digit = 0; digit < digits; ++digit, digest >>= 4U) {
        name += u8"0123456789abcdef"[digest & 0xfU];
    }
    return (path.parent_path() / name).concat(mark);
}

} // namespace orv::utilities

#include "Utilities/StreamContent.h"

#include <ios>
#include <istream>
#include <iterator>

namespace orv::utilities {

std::optional<std::string> contentOf(std::istream& stream) {
    try {
        return std::string(std::istreambuf_iterator<char>(stream), {});
    } catch (const std::ios_base::failure&) {
        return std::nullopt;
    }
}

} // namespace orv::utilities

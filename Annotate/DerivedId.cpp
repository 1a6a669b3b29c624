#include "Annotate/DerivedId.h"

#include "Utilities/Digest.h"

#include <cstdint>

namespace annotate {

orv::Guid derivedId(std::string_view content) {
    const auto digest = orv::utilities::Digest::of(content);
    orv::Guid id;
    id.data1 = static_cast<std::uint32_t>(digest.first >> 32U);
    id.data2 = static_cast<std::uint16_t>(digest.first >> 16U);
    // Version 8 and the variant of RFC 9562: made in a way of one's own.
    id.data3 = static_cast<std::uint16_t>((digest.first & 0x0fffU) | 0x8000U);
    for (unsigned place = 0; place < 8; ++place) {
        id.data4[place] = static_cast<std::uint8_t>(digest.second >> (8U * (7U - place)));
    }
    id.data4[0] = static_cast<std::uint8_t>((id.data4[0] & 0x3fU) | 0x80U);
    return id;
}

} // namespace annotate

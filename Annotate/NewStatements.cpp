#include "Annotate/NewStatements.h"

#include "Annotate/Arguments.h"
#include "Id/Guid.h"
#include "Utilities/Digest.h"

#include <limits>

namespace annotate {

NewStatements::NewStatements(std::uint64_t highestId) : lastId(highestId) {
    constexpr std::uint64_t room = 1ULL << 40U; // more than memory has for them
    if (lastId > std::numeric_limits<std::uint64_t>::max() - room) {
        throw RequestError("The model has an instance #" + std::to_string(highestId) +
                           ", and no room for new ones behind it. Export it again with smaller numbers.");
    }
}

std::uint64_t NewStatements::add(std::string_view keyword, std::string_view parameters) {
    text.append(statementText(++lastId, keyword, parameters)).append("\n");
    return lastId;
}

std::uint64_t NewStatements::addOnce(std::string_view keyword, const std::string& parameters) {
    const auto [place, isNew] = known.try_emplace(std::string(keyword) + '(' + parameters, 0);
    if (isNew) {
        place->second = add(keyword, parameters);
    }
    return place->second;
}

std::string statementText(std::uint64_t id, std::string_view keyword, std::string_view parameters) {
    return std::string("#")
        .append(std::to_string(id))
        .append("=")
        .append(keyword)
        .append("(")
        .append(parameters)
        .append(");");
}

std::string globalIdOf(std::string_view content) {
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
    return '\'' + id.toString(false) + '\'';
}

} // namespace annotate

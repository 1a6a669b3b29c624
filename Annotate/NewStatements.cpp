#include "Annotate/NewStatements.h"

#include "Annotate/Arguments.h"
#include "Annotate/DerivedId.h"

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
    return '\'' + derivedId(content).toString(false) + '\'';
}

} // namespace annotate

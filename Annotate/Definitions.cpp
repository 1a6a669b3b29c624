#include "Annotate/Definitions.h"

#include "Annotate/NearNames.h"
#include "FoundationClasses/FcValueType.h"

#include <algorithm>
#include <array>

namespace annotate {

using orv::fc::FcContent;
using orv::fc::FcValueType;
using orv::host::Outcome;
using Result = orv::host::Outcome::Result;

namespace {

/// What is taken by a type, as the end of a sentence about it.
std::string takenBy(std::string_view typeName) {
    const FcValueType* const type = FcValueType::find(typeName);
    if (type == nullptr) {
        return "";
    }
    switch (type->content) {
    case FcContent::Boolean:
        return ": true or false";
    case FcContent::Logical:
        return ": true, false or unknown";
    case FcContent::Integer:
        return ": whole numbers, as in 12";
    case FcContent::Real:
        return ": numbers with a point, as in 0.24";
    case FcContent::Text:
        return ": texts that aren't empty";
    }
    return "";
}

void removeRepetitions(std::vector<std::string_view>& names) {
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

} // namespace

std::vector<const Definition*> allDefinitions() {
    std::vector<const Definition*> all;
    for (const Definition& definition : orv::ifc::definitions()) {
        all.push_back(&definition);
    }
    for (const Definition* const definition : orv::ifc::addedDefinitions()) {
        all.push_back(definition);
    }
    return all;
}

const Definition& findDefinition(const std::string& set, const std::string& property) {
    if (const Definition* const definition = orv::ifc::findSchemaDefForProperty(set, property)) {
        return *definition;
    }
    throw unknownProperty(set, property, {});
}

RequestError unknownProperty(const std::string& set, const std::string& property, std::vector<std::string_view> names) {
    for (const Definition* const definition : allDefinitions()) {
        if (definition->propertySet == set) {
            names.push_back(definition->property);
        }
    }
    removeRepetitions(names);
    return names.empty() ? unknownSet(set) : RequestError(set + " has no " + property + didYouMean(property, names));
}

RequestError unknownSet(const std::string& set) {
    std::vector<std::string_view> names;
    for (const Definition* const definition : allDefinitions()) {
        names.push_back(definition->propertySet);
    }
    removeRepetitions(names);
    const std::string end = didYouMean(set, names);
    return RequestError("No property set " + set + " is defined" +
                        (end == "." ? ". Definitions of others are taken from files that --definitions names." : end));
}

std::string fullName(const Definition& definition) {
    return std::string(definition.propertySet) + '.' + std::string(definition.property);
}

std::string_view kindName(orv::ifc::def::xml::PropertyKind kind) {
    static constexpr std::array<std::string_view, 7> names{"single", "enumerated", "bounded", "list",
                                                           "table",  "reference",  "complex"};
    return names.at(static_cast<std::size_t>(kind));
}

std::string shownType(const Definition& definition) {
    std::string shown(definition.valueType.empty() ? "any" : definition.valueType);
    if (!definition.definedValueType.empty()) {
        shown.append(" to ").append(definition.definedValueType);
    }
    return shown;
}

std::string explain(const Definition& definition, const Outcome& outcome) {
    switch (outcome.result) {
    case Result::ValueRefused:
        return fullName(definition) + " takes values of the type " + shownType(definition) +
               takenBy(definition.valueType) + ". What was given isn't one.";
    case Result::TakesNoValue:
        return fullName(definition) + " is of the kind " + std::string(kindName(definition.kind)) +
               ", which takes no value.";
    case Result::NoSuchObject:
        return "The overlay has no such object.";
    default:
        return fullName(definition) + " couldn't be set.";
    }
}

} // namespace annotate

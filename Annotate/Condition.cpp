#include "Annotate/Condition.h"

#include "Annotate/Arguments.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/ValueText.h"
#include "FoundationClasses/FcValueType.h"
#include "Host/FieldText.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <iterator>

namespace annotate {

using orv::fc::FcContent;
using orv::host::trimmed;
using orv::ifc::def::xml::PropertyKind;

namespace {

/// Takes a name off the text, in quotation marks or up to one of the characters.
std::string_view takeName(std::string_view& text, std::string_view ends) {
    text = trimmed(text);
    const bool isQuoted = text.starts_with('"');
    const std::size_t begin = isQuoted ? 1 : 0;
    const std::size_t end = std::min(isQuoted ? text.find('"', begin) : text.find_first_of(ends), text.size());
    const std::string_view name = text.substr(begin, end - begin);
    text.remove_prefix(std::min(end + begin, text.size()));
    return isQuoted ? name : trimmed(name);
}

std::vector<std::string> partsOf(const std::string& text) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

constexpr std::string_view anyNumber = "numbers";

/// The values that a property can have, with semicolons between them, or anyNumber; empty if those are others.
std::string valuesTakenBy(const orv::ifc::def::xml::Def& definition) {
    const auto* const type = orv::fc::FcValueType::find(definition.valueType);
    if (definition.kind == PropertyKind::Enumerated) {
        return std::string(definition.enumerationValues);
    }
    if (definition.kind == PropertyKind::Table || type == nullptr) { // those of a table have two types
        return "";
    }
    switch (type->content) {
    case FcContent::Boolean:
        return "true;false";
    case FcContent::Logical:
        return "true;false;unknown";
    case FcContent::Integer:
    case FcContent::Real:
        return std::string(anyNumber);
    case FcContent::Text:
        return "";
    }
    return "";
}

} // namespace

struct Condition::Spelling {
    std::string_view text;
    Operator operation;
};

Condition::Condition(std::string_view text) {
    constexpr Spelling spellings[] = {
        // the longer ones first
        {"!=", Operator::Unequal}, {"<=", Operator::LessOrEqual},  {">=", Operator::GreaterOrEqual},
        {"=", Operator::Equal},    {"<", Operator::Less},          {">", Operator::Greater},
        {"~", Operator::Contains}, {"present", Operator::Present}, {"absent", Operator::Absent},
    };
    constexpr std::string_view operators = "!<=>~";
    const auto refusal = [text] {
        return RequestError(std::string("\"").append(text) +
                            "\" isn't a condition like Pset_WallCommon.IsExternal=true. Compare by =, !=, <, <=, >, "
                            ">= or ~, or put present or absent behind the name; quote names that have dots.");
    };
    std::string_view rest = trimmed(text);
    set = takeName(rest, ".");
    rest = trimmed(rest);
    if (!rest.starts_with('.')) {
        throw refusal();
    }
    rest.remove_prefix(1);
    const bool isQuoted = trimmed(rest).starts_with('"');
    property = takeName(rest, operators);
    if (!isQuoted && rest.empty()) { // no operator but a word, behind a blank
        const std::size_t blank = property.rfind(' ');
        rest = blank == std::string::npos ? "" : trimmed(text).substr(trimmed(text).rfind(' '));
        property = trimmed(std::string_view(property).substr(0, blank));
    }
    rest = trimmed(rest);
    const auto* const found = std::find_if(std::begin(spellings), std::end(spellings),
                                           [&](const Spelling& each) { return rest.starts_with(each.text); });
    if (set.empty() || property.empty() || found == std::end(spellings)) {
        throw refusal();
    }
    operation = found->operation;
    value = trimmed(rest.substr(found->text.size()));
    if (operation == Operator::Contains) {
        part.emplace(value);
    }
    const bool isAlone = operation == Operator::Present || operation == Operator::Absent;
    if (isAlone != value.empty()) {
        throw refusal();
    }
}

void Condition::takeUnit(const Definition& definition, const ModelUnits& units) {
    if (!part && !value.empty()) {
        std::vector<orv::object::PropertyValue> values = {value};
        takeUnits(definition, units, "", values);
        value = valueText(values.front());
    }
}

bool Condition::holds(const std::vector<std::string>& values) const {
    const auto isEqual = [this](const std::string& candidate) { return std::is_eq(comparedWith(candidate)); };
    switch (operation) {
    case Operator::Present:
        return !values.empty();
    case Operator::Absent:
        return values.empty();
    case Operator::Unequal:
        return !values.empty() && std::none_of(values.begin(), values.end(), isEqual);
    default:
        return std::any_of(values.begin(), values.end(),
                           [this](const std::string& candidate) { return holdsFor(candidate); });
    }
}

bool Condition::concerns(const std::vector<std::string>& values) const {
    return operation == Operator::Unequal ? !values.empty() && !holds(values) : holds(values);
}

std::string Condition::objection(bool areNumbers) const {
    const auto* const definition = orv::ifc::findSchemaDefForProperty(set, property);
    double number = 0;
    if (value.empty() || part) {
        return "";
    }
    if (definition == nullptr) {
        return !areNumbers || orv::host::take(value, number)
                   ? ""
                   : "The values of " + set + '.' + property + " are numbers, and \"" + value + "\" isn't one.";
    }
    const std::string taken = valuesTakenBy(*definition);
    const std::vector<std::string> choices = partsOf(taken);
    const bool isTaken =
        taken.empty() || (taken == anyNumber ? orv::host::take(value, number)
                                             : std::find(choices.begin(), choices.end(), value) != choices.end());
    return isTaken ? ""
                   : "By its definition the values of " + set + '.' + property + " are " + taken + ", and \"" + value +
                         "\" isn't among them.";
}

bool Condition::holdsFor(const std::string& candidate) const {
    const std::partial_ordering order = comparedWith(candidate);
    switch (operation) {
    case Operator::Less:
        return std::is_lt(order);
    case Operator::LessOrEqual:
        return std::is_lteq(order);
    case Operator::Greater:
        return std::is_gt(order);
    case Operator::GreaterOrEqual:
        return std::is_gteq(order);
    case Operator::Contains:
        return part->isIn(candidate);
    default:
        return std::is_eq(order);
    }
}

/// A number and a text have no order.
std::partial_ordering Condition::comparedWith(const std::string& candidate) const {
    double number = 0;
    double other = 0;
    const bool isNumber = orv::host::take(candidate, number);
    if (isNumber != orv::host::take(value, other)) {
        return std::partial_ordering::unordered;
    }
    return isNumber ? number <=> other : std::partial_ordering(candidate <=> value);
}

} // namespace annotate

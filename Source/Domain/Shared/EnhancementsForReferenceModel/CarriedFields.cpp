#include "Domain/Shared/EnhancementsForReferenceModel/CarriedFields.h"

#include <algorithm>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using Written = CarriedFields::Written;
using Child = xml::ElementParts::Child;

bool isGivenBack(const std::vector<Written>& written, std::string_view name) {
    return std::any_of(written.begin(), written.end(), [name](const Written& one) { return one.name == name; });
}

/// Whether the child says no more than what is written in its place. An element without a text had none to lose.
bool isSame(const Child& child, const Written& written) {
    return child.isPlain && (!child.text || (written.hasText && *child.text == written.text));
}

} // namespace

bool CarriedFields::settle(const std::vector<Written>& written) {
    std::erase_if(fields, [&](const Field& field) { return !field.name.empty() && isGivenBack(written, field.name); });
    const auto element = std::exchange(read, nullptr);
    if (!element) {
        return true;
    }
    attributes = element->attributes;
    bool isUnaltered = true;
    std::vector<Written> unmatched = written; // children of one name come back in their order
    for (const Child& child : element->children) {
        carry({}, child.ahead);
        if (!isGivenBack(written, child.name)) {
            carry(child.name, child.markup);
            continue;
        }
        const auto match = std::find_if(unmatched.begin(), unmatched.end(),
                                        [&](const Written& one) { return one.name == child.name; });
        if (match == unmatched.end() || !isSame(child, *match)) {
            isUnaltered = false;
        }
        if (match != unmatched.end()) {
            unmatched.erase(match);
        }
    }
    carry({}, element->behind);
    return isUnaltered;
}

void CarriedFields::carry(std::string_view name, std::string_view markup) {
    if (!markup.empty()) {
        fields.push_back({std::string(name), std::string(markup)});
    }
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

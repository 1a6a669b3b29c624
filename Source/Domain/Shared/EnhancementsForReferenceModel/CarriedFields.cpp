#include "Domain/Shared/EnhancementsForReferenceModel/CarriedFields.h"

#include <algorithm>
#include <unordered_map>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using Written = CarriedFields::Written;
using Child = xml::ElementParts::Child;

/// What is written under each name, the last first.
using WrittenByName = std::unordered_map<std::string_view, std::vector<const Written*>>;

WrittenByName byName(const std::vector<Written>& written) {
    WrittenByName result;
    std::for_each(written.rbegin(), written.rend(), [&](const Written& one) { result[one.name].push_back(&one); });
    return result;
}

/// Whether the child says no more than what is written in its place. An element without a text had none to lose.
bool isSame(const Child& child, const Written& written) {
    return child.isPlain && (!child.text || (written.hasText && *child.text == written.text));
}

} // namespace

bool CarriedFields::settle(const std::vector<Written>& written) {
    WrittenByName unmatched = byName(written);
    std::erase_if(fields, [&](const Field& field) { return !field.name.empty() && unmatched.contains(field.name); });
    const auto element = std::exchange(read, nullptr);
    if (!element) {
        return true;
    }
    attributes = element->attributes;
    bool isUnaltered = true;
    for (const Child& child : element->children) {
        carry({}, child.ahead);
        const auto found = unmatched.find(child.name);
        if (found == unmatched.end()) {
            carry(child.name, child.markup);
            continue;
        }
        auto& [name, inTurn] = *found; // children of one name come back in their order
        if (inTurn.empty() || !isSame(child, *inTurn.back())) {
            isUnaltered = false;
        }
        if (!inTurn.empty()) {
            inTurn.pop_back();
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

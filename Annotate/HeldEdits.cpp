#include "Annotate/HeldEdits.h"

#include "Annotate/ModelDetails.h"
#include "Annotate/NamedObject.h"

#include <algorithm>
#include <array>
#include <optional>

namespace annotate {

namespace {

struct Source {
    std::optional<orv::Guid> id;
    std::string_view from;
};

/// What an object has properties from, the nearest first.
std::array<Source, 3> sourcesOf(const ModelObject& object, const ModelDetails& details) {
    const auto idOfAny = [&details](const ModelObject* source) {
        return source == nullptr ? std::nullopt : idOf(details.getModel(), *source);
    };
    return {{{idOfAny(&object), ""},
             {idOfAny(details.declarationOf(object)), fromDeclaration},
             {idOfAny(details.typeOf(object)), fromType}}};
}

bool isSet(const EditIndex::Entry& entry) {
    return entry.edit.form != orv::host::PropertyEdit::Form::Unset;
}

} // namespace

std::vector<HeldEdit> editsFor(const ModelObject& object, const ModelDetails& details, const EditIndex& edits) {
    std::vector<HeldEdit> held;
    const auto isHeld = [&held](const EditIndex::Entry& entry) {
        return std::any_of(held.begin(), held.end(), [&entry](const HeldEdit& each) {
            return each.entry->edit.set == entry.edit.set && each.entry->edit.property == entry.edit.property;
        });
    };
    for (const auto& [id, from] : sourcesOf(object, details)) {
        for (const EditIndex::Entry* const entry : id ? edits.of(*id) : std::vector<const EditIndex::Entry*>()) {
            if (isSet(*entry) && !isHeld(*entry)) {
                held.push_back({entry, from});
            }
        }
    }
    return held;
}

HeldEdit editFor(const ModelObject& object, const ModelDetails& details, const EditIndex& edits, const std::string& set,
                 const std::string& property) {
    for (const auto& [id, from] : sourcesOf(object, details)) {
        const EditIndex::Entry* const entry = id ? edits.find(*id, set, property) : nullptr;
        if (entry != nullptr && isSet(*entry)) {
            return {entry, from};
        }
    }
    return {};
}

} // namespace annotate

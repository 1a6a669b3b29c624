#include "Annotate/SetsOfObjects.h"

namespace annotate {

MergedProperty SetsOfObjects::find(const ModelObject& object, const HeldEdit& edit, std::string_view set,
                                   std::string_view property) {
    const auto [known, isNew] = sets.try_emplace(&object);
    if (isNew) {
        known->second = details->setsOf(object);
    }
    return mergedProperty(known->second, edit, set, property);
}

MergedProperty SetsOfObjects::find(const ModelObject* object, const EditIndex::Entry& entry) {
    return object == nullptr ? MergedProperty{entry.edit.set, entry.edit.property, nullptr, &entry}
                             : find(*object, {&entry, ""}, entry.edit.set, entry.edit.property);
}

} // namespace annotate

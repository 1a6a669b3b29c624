#include "FoundationClasses/Data.h"

#include "FoundationClasses/FcObjectDefinition.h"
#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyListValue.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"

#include <numeric>

namespace orv::fc {

namespace {

std::shared_ptr<FcBase> makeEntity(const IfcClass& row, const std::weak_ptr<Data>& owner) {
    switch (row.kindNumber) {
    case FcPropertyBoundedValue::classNumber:
        return std::make_shared<FcPropertyBoundedValue>();
    case FcPropertyEnumeratedValue::classNumber:
        return std::make_shared<FcPropertyEnumeratedValue>();
    case FcPropertyListValue::classNumber:
        return std::make_shared<FcPropertyListValue>();
    case FcPropertySingleValue::classNumber:
        return std::make_shared<FcPropertySingleValue>();
    case FcPropertyTableValue::classNumber:
        return std::make_shared<FcPropertyTableValue>();
    case core::kernel::FcPropertySet::classNumber:
        return std::make_shared<core::kernel::FcPropertySet>();
    default:
        break;
    }
    if (FcProperty::isProperty(row.kindNumber)) {
        return std::make_shared<FcPropertyWithoutValue>(row);
    }
    // The neighbours of the object definitions in the table have the same form.
    auto object = std::make_shared<core::kernel::FcObjectDefinition>(row);
    object->data = owner;
    return object;
}

} // namespace

std::shared_ptr<FcBase> Data::entityCreate(const std::string& name) {
    const IfcClass* const row = IfcClass::find(name);
    if (row == nullptr || row->name != name) {
        return nullptr;
    }
    auto entity = makeEntity(row->present(), weak_from_this());
    entities.push_back(entity);
    unindexedEntities.push_back(entities.size() - 1);
    return entity;
}

std::shared_ptr<FcBase> Data::findByGuid(const Guid& guid) const {
    if (!unindexedEntities.empty()) {
        indexNewEntities();
    }
    return guidIndex.find(entities, guid);
}

void Data::guidUpdate() const {
    unindexedEntities.resize(entities.size());
    std::iota(unindexedEntities.begin(), unindexedEntities.end(), std::size_t{0});
    guidIndex = {};
    indexNewEntities();
}

/// Takes the objects into the index that were made since the last search or had no Guid then.
void Data::indexNewEntities() const {
    for (const std::size_t index : unindexedEntities) {
        guidIndex.set(entities, index);
    }
    std::erase_if(unindexedEntities, [this](std::size_t index) { return entities[index]->guid != Guid(); });
}

} // namespace orv::fc

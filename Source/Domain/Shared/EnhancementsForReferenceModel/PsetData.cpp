// The handle and how it finds objects. What it reads and writes is in PsetDataReads.cpp and PsetDataWrites.cpp.

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include "Assert/Assert.h"

#include <tuple>

namespace orv::domain::shared::enhancementsforreferencemodel {

using fc::FcProperty;
using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;

namespace {

PsetData::ReadOnlyCallback& readOnlyCallback() {
    static PsetData::ReadOnlyCallback callback;
    return callback;
}

PsetData::ReadWriteCallback& readWriteCallback() {
    static PsetData::ReadWriteCallback callback;
    return callback;
}

PsetData::ObjectCallback& objectCallback() {
    static PsetData::ObjectCallback callback;
    return callback;
}

void reportNoCallback() {
    if (assert::Assert::isEnabled()) {
        assert::Assert::addAssert({0, "Could not set callback for PsetData",
                                   "orv::domain::shared::enhancementsforreferencemodel::PsetData::PsetData",
                                   "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData", 52});
    }
}

} // namespace

void PsetData::getPsetShadowDbReadOnlyCallbackSet(ReadOnlyCallback callback) {
    readOnlyCallback() = std::move(callback);
}

void PsetData::getPsetShadowDbReadWriteCallbackSet(ReadWriteCallback callback) {
    readWriteCallback() = std::move(callback);
}

void PsetData::getObjectFromGuidCallbackSet(ObjectCallback callback) {
    objectCallback() = std::move(callback);
}

PsetData::PsetData() : PsetData(true) {}

PsetData::PsetData(bool readOnly) {
    const bool hasCallback = readOnly ? static_cast<bool>(readOnlyCallback()) : static_cast<bool>(readWriteCallback());
    if (!hasCallback) {
        reportNoCallback();
        return;
    }
    if (readOnly) {
        db = readOnlyCallback()();
    } else {
        std::tie(db, guard) = readWriteCallback()();
    }
}

std::shared_ptr<fc::FcShadowDb> PsetData::getDb() {
    return db;
}

std::shared_ptr<FcObjectDefinition> PsetData::findShadowObject(const Guid& guid) const {
    auto found = db ? db->data().findByGuid(guid) : nullptr;
    const bool isObject = found && fc::IfcClass::isObjectDefinition(found->kindNumber());
    return isObject ? std::static_pointer_cast<FcObjectDefinition>(std::move(found)) : nullptr;
}

std::shared_ptr<const FcObjectDefinition> PsetData::resolveObject(const Guid& guid) const {
    if (!db) {
        return nullptr;
    }
    if (const auto found = db->data().findByGuid(guid)) {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(found);
    }
    return objectCallback() ? objectCallback()(guid) : nullptr;
}

std::shared_ptr<FcObjectDefinition> PsetData::getShadowObject(const Guid& guid) const {
    if (auto shadow = findShadowObject(guid)) {
        return shadow;
    }
    const auto object = resolveObject(guid);
    return object ? getShadowObject(*object) : nullptr;
}

std::shared_ptr<FcObjectDefinition> PsetData::getShadowObject(const FcObjectDefinition& object) const {
    return db ? db->getShadowObject(object) : nullptr;
}

std::shared_ptr<FcProperty> PsetData::findProperty(const Guid& guid, const std::string& pset,
                                                   const std::string& property) const {
    const auto shadow = findShadowObject(guid);
    const auto set = shadow ? shadow->getPropertySetDefinitionNonConst<FcPropertySet>(pset) : nullptr;
    return set ? set->findProperty(property) : nullptr;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

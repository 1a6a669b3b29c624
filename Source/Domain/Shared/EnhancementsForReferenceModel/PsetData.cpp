// The handle and how it finds objects. What it reads and writes is in PsetDataReads.cpp and PsetDataWrites.cpp.

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include "Assert/Assert.h"
#include "Assert/CallbackSlot.h"

#include <tuple>

namespace orv::domain::shared::enhancementsforreferencemodel {

using fc::FcProperty;
using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;

namespace {

void reportNoCallback() {
    assert::Assert::addAssert({0, "Could not set callback for PsetData",
                               "orv::domain::shared::enhancementsforreferencemodel::PsetData::PsetData",
                               "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData", 52});
}

} // namespace

void PsetData::getPsetShadowDbReadOnlyCallbackSet(ReadOnlyCallback callback) {
    CallbackSlot<ReadOnlyCallback>::set(std::move(callback));
}

void PsetData::getPsetShadowDbReadWriteCallbackSet(ReadWriteCallback callback) {
    CallbackSlot<ReadWriteCallback>::set(std::move(callback));
}

void PsetData::getObjectFromGuidCallbackSet(ObjectCallback callback) {
    CallbackSlot<ObjectCallback>::set(std::move(callback));
}

PsetData::PsetData() : PsetData(true) {}

PsetData::PsetData(bool readOnly) {
    const auto reading = readOnly ? CallbackSlot<ReadOnlyCallback>::get() : nullptr;
    const auto writing = readOnly ? nullptr : CallbackSlot<ReadWriteCallback>::get();
    if (assert::Assert::isEnabled() && !reading && !writing) {
        reportNoCallback();
    }
    if (reading) {
        db = (*reading)();
    } else if (writing) {
        std::tie(db, guard) = (*writing)();
    }
}

std::shared_ptr<fc::FcShadowDb> PsetData::getDb() {
    return db;
}

std::shared_ptr<FcObjectDefinition> PsetData::findShadowObject(const Guid& guid) const {
    return db ? db->findShadowObject(guid) : nullptr;
}

std::shared_ptr<const FcObjectDefinition> PsetData::resolveObject(const Guid& guid) const {
    if (!db) {
        return nullptr;
    }
    if (auto found = db->data().findByGuid(guid)) {
        if (fc::IfcClass::isObjectDefinition(found->kindNumber())) {
            return std::static_pointer_cast<FcObjectDefinition>(std::move(found));
        }
        fc::FcShadowDb::reportOtherType();
        return nullptr;
    }
    const auto callback = CallbackSlot<ObjectCallback>::get();
    return callback ? (*callback)(guid) : nullptr;
}

std::shared_ptr<FcProperty> PsetData::findProperty(const Guid& guid, const std::string& pset,
                                                   const std::string& property) const {
    const auto shadow = findShadowObject(guid);
    const auto set = shadow ? shadow->getPropertySetDefinitionNonConst<FcPropertySet>(pset) : nullptr;
    return set ? set->findProperty(property) : nullptr;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel

#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "Support/OverlayReading.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

namespace orv::domain::shared::enhancementsforreferencemodel::psetdatatest {

using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;
using object::PropertyValue;
using Property = std::pair<std::string, std::string>;
using Rows = std::vector<std::pair<PropertyValue, PropertyValue>>;
using Values = std::vector<PropertyValue>;

inline const Guid wallId{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
inline const std::string wallSet = "Pset_WallCommon";
inline const Property fireRating{wallSet, "FireRating"};
inline const Property bounded{"Pset_AirTerminalBoxTypeCommon", "AirPressureRange"};
inline const Property list{"Pset_Address", "AddressLines"};
inline const Property table{"Pset_AirTerminalPHistory", "InductionRatio"};
inline const std::string source = "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData:";
inline const std::string scope = "orv::domain::shared::enhancementsforreferencemodel::PsetData::";

/// An overlay of a model that has one wall.
class PsetDataTest : public tests::ReportTest {
protected:
    PsetDataTest() {
        wall->guid = wallId;
        PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return database; });
        PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(database, ScopeGuard()); });
        PsetData::getObjectFromGuidCallbackSet([this](const Guid& guid) {
            ++asked;
            return guid == wallId ? wall : nullptr;
        });
    }

    template <typename Value>
    void set(const Property& property, const Value& value) {
        PsetData(false).setValue(wallId, property.first, property.second, value);
    }

    static std::string get(const Property& property) {
        return tests::readingOf(wallId, property.first, property.second);
    }

    /// The number of properties in the sets of the wall's shadow object.
    std::size_t propertyCount() {
        const auto shadow = std::dynamic_pointer_cast<FcObjectDefinition>(database->data().findByGuid(wallId));
        std::size_t count = 0;
        for (const auto& set : shadow->propertySetDefinitions) {
            count += std::dynamic_pointer_cast<FcPropertySet>(set)->properties.size();
        }
        return count;
    }

    std::shared_ptr<fc::FcShadowDb> database = std::make_shared<fc::FcShadowDb>();
    std::shared_ptr<FcObjectDefinition> wall = std::make_shared<FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
    int asked = 0;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel::psetdatatest

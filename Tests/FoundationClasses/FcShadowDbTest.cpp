#include "FoundationClasses/FcShadowDb.h"

#include "FoundationClasses/FcProperty.h"
#include "Support/FailingAllocation.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace orv::fc {
namespace {

using FcShadowDbTest = tests::ReportTest;
using core::kernel::FcObjectDefinition;

const Guid id{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
const Guid otherId{12, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

TEST_F(FcShadowDbTest, makesEveryClassOfTheTableAndNoOther) {
    const auto data = std::make_shared<Data>();
    int made = 0;
    for (std::uint32_t number = 0; number < 1000; ++number) {
        if (const IfcClass* row = IfcClass::ofNumber(number)) {
            const auto entity = data->entityCreate(std::string(row->name));
            ASSERT_NE(entity, nullptr) << row->name.data();
            EXPECT_EQ(entity->kindNumber(), number);
            EXPECT_EQ(entity->className(), row->name);
            EXPECT_EQ(std::dynamic_pointer_cast<FcProperty>(entity) != nullptr, number >= 166 && number <= 174);
            ++made;
        }
    }
    EXPECT_EQ(made, 493);
    EXPECT_STREQ(data->entityCreate("IfcDoorStyle")->className(), "IfcTypeProduct");
    for (const char* name : {"", "IfcWal", "IFCWALL", "ifcWall", "IfcCartesianPoint"}) {
        EXPECT_EQ(data->entityCreate(name), nullptr) << name;
    }
}

TEST_F(FcShadowDbTest, indexesObjectsUnderTheGuidThatTheyHaveAtTheNextSearchAndFindsTheNewest) {
    const auto data = std::make_shared<Data>();
    const auto first = data->entityCreate("IfcWall");
    EXPECT_EQ(data->findByGuid(id), nullptr);
    EXPECT_EQ(data->findByGuid(Guid()), first);
    const auto second = data->entityCreate("IfcWall");
    second->guid = id;
    EXPECT_EQ(data->findByGuid(id), second);
    const auto third = data->entityCreate("IfcDoor");
    third->guid = id;
    EXPECT_EQ(data->findByGuid(id), third);
    first->guid = otherId;
    EXPECT_EQ(data->findByGuid(otherId), first);
    EXPECT_EQ(data->findByGuid(Guid()), nullptr);
    first->guid = id;
    second->guid = otherId;
    data->guidUpdate();
    EXPECT_EQ(data->findByGuid(id), third);
    EXPECT_EQ(data->findByGuid(otherId), second);
}

TEST_F(FcShadowDbTest, findsEachOfManyObjectsThatWereSearchedBeforeTheirGuidWasSet) {
    const auto data = std::make_shared<Data>();
    std::vector<std::shared_ptr<FcBase>> objects;
    for (std::uint32_t number = 1; number <= 1000; ++number) {
        objects.push_back(data->entityCreate("IfcWall"));
        EXPECT_EQ(data->findByGuid(Guid()), objects.back());
        objects.back()->guid.data1 = number;
    }
    for (const auto& object : objects) {
        EXPECT_EQ(data->findByGuid(object->guid), object);
    }
    EXPECT_EQ(data->findByGuid(Guid{1001, 0, 0, {}}), nullptr);
}

TEST_F(FcShadowDbTest, makesNoShadowObjectOfAClassWithoutObjects) {
    FcShadowDb database;
    class Unknown : public FcObjectDefinition {
        using FcObjectDefinition::FcObjectDefinition;
        const char* className() const override { return "IfcUnknown"; }
    };
    EXPECT_EQ(database.getShadowObject(Unknown(*IfcClass::find("IfcWall"))), nullptr);
    FcObjectDefinition relation(*IfcClass::find("IfcRelAggregates"));
    relation.guid = id;
    EXPECT_EQ(database.getShadowObject(relation), nullptr);
    EXPECT_EQ(database.data().findByGuid(id), nullptr);
    EXPECT_TRUE(database.shadowObjects.empty());
}

TEST_F(FcShadowDbTest, findsNoObjectThatItDoesNotHaveWhereverMemoryRunsOut) {
    FcObjectDefinition master(*IfcClass::find("IfcWall"));
    master.guid = id;
    std::shared_ptr<FcObjectDefinition> shadow;
    for (std::size_t number = 0; !shadow; ++number) {
        FcShadowDb database;
        tests::allocationsAhead = number;
        try {
            shadow = database.getShadowObject(master);
        } catch (const std::bad_alloc&) {}
        tests::allocationsAhead = std::numeric_limits<std::size_t>::max();
        const auto found = database.data().findByGuid(id);
        EXPECT_EQ(found, database.shadowObjects.empty() ? nullptr : database.shadowObjects.front()) << number;
    }
}

TEST_F(FcShadowDbTest, reportsAnObjectUnderTheMastersGuidThatIsNoObjectDefinition) {
    FcShadowDb database;
    database.data().entityCreate("IfcRoot")->guid = id;
    FcObjectDefinition master(*IfcClass::find("IfcWall"));
    master.guid = id;
    const auto shadow = database.getShadowObject(master);
    EXPECT_EQ(database.getShadowObject(master), shadow);
    EXPECT_EQ(database.shadowObjects, std::vector{shadow});
    EXPECT_EQ(takeReports(),
              tests::Reports{"Source/FoundationClasses/FcShadowDb:61: orv::fc::FcShadowDb::getShadowObject: FcShadowDb "
                             "already contains a shadow object with this Guid, but of another type... Does the master "
                             "file contain duplicate guids or something?"});
}

} // namespace
} // namespace orv::fc

#include "Domain/Shared/EnhancementsForReferenceModel/PsetDataTest.h"

#include <cstdlib>
#include <unistd.h>

namespace orv::domain::shared::enhancementsforreferencemodel::psetdatatest {
namespace {

/// What a destructor does that runs after those of everything that a test makes.
std::function<void()> lastAction;
const ScopeGuard runsLastAction([] {
    if (lastAction) {
        lastAction();
    }
});

TEST_F(PsetDataTest, reportsAMissingCallbackOfItsModeAndDoesNothingWithoutADatabase) {
    const auto useAll = [this](PsetData& overlay) {
        EXPECT_EQ(overlay.getDb(), nullptr);
        overlay.setValue(wallId, wallSet, "FireRating", PropertyValue("F90"));
        overlay.setValue(wall, wallSet, "FireRating", PropertyValue("F90"));
        overlay.setValue(nullptr, wallSet, "FireRating", PropertyValue("F90"));
        EXPECT_TRUE(overlay.getValue(wallId, wallSet, "FireRating").isEmpty());
    };
    const std::string expected = source + "52: " + scope + "PsetData: Could not set callback for PsetData";
    PsetData::getPsetShadowDbReadOnlyCallbackSet(nullptr);
    PsetData reading(true);
    EXPECT_EQ(takeReports(), tests::Reports{expected});
    useAll(reading);
    PsetData::getPsetShadowDbReadOnlyCallbackSet([] { return std::shared_ptr<fc::FcShadowDb>(); });
    PsetData::getPsetShadowDbReadWriteCallbackSet(nullptr);
    PsetData writing(false);
    EXPECT_EQ(takeReports(), tests::Reports{expected});
    useAll(writing);
    PsetData withoutDatabase;
    useAll(withoutDatabase);
    EXPECT_EQ(asked, 0);
}

TEST_F(PsetDataTest, reportsAGuidOfWhatIsNoObjectAndMakesNothing) {
    for (const char* name : {"IfcPropertySet", "IfcRelAggregates", "IfcPropertySingleValue"}) {
        const auto found = database->data().entityCreate(name);
        found->guid = wallId;
        set(fireRating, PropertyValue("F90"));
        EXPECT_EQ(takeReports(),
                  tests::Reports{"Source/FoundationClasses/FcShadowDb:61: orv::fc::FcShadowDb::getShadowObject: "
                                 "FcShadowDb already contains a shadow object with this Guid, but of another type... "
                                 "Does the master file contain duplicate guids or something?"});
        EXPECT_EQ(database->data().findByGuid(wallId), found);
        EXPECT_TRUE(database->shadowObjects.empty());
    }
    EXPECT_EQ(asked, 0);
}

TEST_F(PsetDataTest, keepsTheObjectThatTheHostFoundToTheEndOfTheWrite) {
    std::string valueAtTheEnd;
    PsetData::getObjectFromGuidCallbackSet([&](const Guid&) {
        return std::shared_ptr<const FcObjectDefinition>(
            wall.get(), [&](const FcObjectDefinition*) { valueAtTheEnd = get(fireRating); });
    });
    set(fireRating, PropertyValue("F90"));
    EXPECT_EQ(valueAtTheEnd, "5:F90");
}

TEST_F(PsetDataTest, findsNoCallbackAndNoReceiverInADestructorAtTheEndOfTheProcess) {
    const std::string expected = source + "52: " + scope + "PsetData: Could not set callback for PsetData\n";
    const auto useAll = [this, overlay = std::make_shared<PsetData>(false)] {
        PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return database; });
        const PsetData reading;
        const PsetData writing(false);
        overlay->setValue(wallId, wallSet, "FireRating", PropertyValue("F90"));
        ::_exit(asked);
    };
    const auto end = [&] {
        lastAction = useAll;
        std::exit(99);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), '^' + expected + expected + '$');
}

TEST_F(PsetDataTest, letsCallbacksTakeThemselvesAwayWhileTheyRun) {
    PsetData::getPsetShadowDbReadOnlyCallbackSet([held = database] {
        PsetData::getPsetShadowDbReadOnlyCallbackSet(nullptr);
        return held;
    });
    PsetData::getPsetShadowDbReadWriteCallbackSet([held = database] {
        PsetData::getPsetShadowDbReadWriteCallbackSet(nullptr);
        return std::pair(held, ScopeGuard());
    });
    PsetData::getObjectFromGuidCallbackSet([held = wall](const Guid& /*guid*/) {
        PsetData::getObjectFromGuidCallbackSet(nullptr);
        return held;
    });
    EXPECT_EQ(PsetData().getDb(), database);
    set(fireRating, PropertyValue("F90"));
    EXPECT_EQ(database->shadowObjects.size(), 1U);
    const PsetData reading;
    const PsetData writing(false);
    EXPECT_EQ(takeReports().size(), 2U);
}

TEST_F(PsetDataTest, runsTheGuardOnceBeforeItLetsGoOfTheDatabase) {
    std::string events;
    std::weak_ptr<fc::FcShadowDb> watched = database;
    PsetData::getPsetShadowDbReadWriteCallbackSet([&] {
        return std::pair(std::exchange(database, nullptr),
                         ScopeGuard([&] { events += watched.expired() ? "too late" : "in time"; }));
    });
    {
        PsetData overlay(false);
        EXPECT_EQ(events, "");
    }
    EXPECT_EQ(events, "in time");
    EXPECT_TRUE(watched.expired());
}

TEST_F(PsetDataTest, asksTheModelOnceAndOnlyForWrites) {
    EXPECT_EQ(get(fireRating), "0:");
    EXPECT_EQ(asked, 0);
    set(fireRating, PropertyValue("F90"));
    set(fireRating, PropertyValue("F60"));
    set(list, Values{"a"});
    EXPECT_EQ(asked, 1);
    const Guid unknown;
    PsetData(false).setValue(unknown, wallSet, "FireRating", PropertyValue("F90"));
    PsetData::getObjectFromGuidCallbackSet(nullptr);
    PsetData(false).setValue(unknown, wallSet, "FireRating", PropertyValue("F90"));
    set(fireRating, PropertyValue("F30"));
    EXPECT_EQ(get(fireRating), "5:F30");
    EXPECT_EQ(database->shadowObjects.size(), 1U);
    EXPECT_TRUE(wall->propertySetDefinitions.empty());
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel::psetdatatest

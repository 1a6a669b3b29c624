#include "Host/OverlayTest.h"

#include "FoundationClasses/FcPropertyBoundedValue.h"

namespace orv::host::overlaytest {
namespace {

TEST_F(OverlayTest, keepsWhatItSetsAndRestoresIt) {
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "FireRating", "F30"));
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "FireRating", "F90"));
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "ThermalTransmittance", "0.25", "W/m2K"));
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "Status", "NEW;EXISTING"));
    EXPECT_TRUE(overlay.set(wall, "Pset_DoorCommon", "IsExternal", true));
    EXPECT_TRUE(overlay.set(wall, "Pset_ActuatorTypeCommon", "FailPosition", Values{"FAILOPEN"}));
    EXPECT_TRUE(overlay.set(wall, "Pset_AirTerminalTypeCommon", "AirFlowrateRange", Bounds{0.1, 2, {}}));
    EXPECT_TRUE(overlay.set(wall, "Pset_AirTerminalTypeCommon", "AirFlowrateRange", Bounds{{}, 0.3, 1e-7}));
    EXPECT_TRUE(overlay.set(door, "Pset_Address", "AddressLines", Values{"a", ""}));
    EXPECT_TRUE(overlay.set(door, "Pset_Address", "AddressLines", Values{"b;c", 5}));
    EXPECT_TRUE(overlay.set(door, "Own", "Table", Rows{{1, "a"}, {2.0, "b"}}));
    EXPECT_TRUE(overlay.set(door, "Own", "Table", Rows{{3, "c"}}));
    const std::vector<std::string> lines = {
        R"(Pset_WallCommon.FireRating single "F90")",
        R"(Pset_WallCommon.ThermalTransmittance single 0.25 unit "W/m2K")",
        R"(Pset_WallCommon.Status enumerated "NEW" "EXISTING")",
        R"(Pset_DoorCommon.IsExternal single true)",
        R"(Pset_ActuatorTypeCommon.FailPosition enumerated "FAILOPEN")",
        R"(Pset_AirTerminalTypeCommon.AirFlowrateRange bounded upper 0.3 set-point 1e-07)",
        R"(Pset_Address.AddressLines list "b;c" "5")",
        R"(Own.Table table 3 "c")"};
    EXPECT_EQ(storedLines(), lines);
    EXPECT_EQ(Enhancements::getOrCreateEnhancementsDb()->getRecords().size(), 2U);
    for (const bool isRestored : {false, true}) {
        if (isRestored) {
            forgetShadows();
            PsetData(false).setValue(door, "Pset_Address", "AddressLines", Values{"of the host's own"});
            EXPECT_TRUE(overlay.restore().empty());
        }
        EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "5:F90");
        EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "ThermalTransmittance"), "4:0.25");
        EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "Status"), "5:NEW;EXISTING");
        EXPECT_EQ(readingOf(wall, "Pset_DoorCommon", "IsExternal"), "3:true");
        EXPECT_EQ(readingOf(wall, "Pset_AirTerminalTypeCommon", "AirFlowrateRange"), "5:;0.3;1e-07");
        EXPECT_EQ(readingOf(door, "Pset_Address", "AddressLines"), "0:|5:b;c|5:5");
        EXPECT_EQ(readingOf(door, "Own", "Table"), "0:|1:3=5:c");
    }
}

TEST_F(OverlayTest, unsetsForGood) {
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "FireRating", "F30"));
    EXPECT_TRUE(overlay.unset(wall, "Pset_WallCommon", "FireRating"));
    EXPECT_EQ(storedLines(), std::vector<std::string>{"Pset_WallCommon.FireRating unset"});
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "0:");
    addEdits(wall, {R"(Pset_WallCommon.FireRating single "F60" by "Ben" at 2020-01-01T00:00:00Z)"});
    EXPECT_TRUE(overlay.restore().empty());
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "0:");
}

TEST_F(OverlayTest, asksTheHostForItsDatabaseOnceForManyEditsAndNeverForAnother) {
    int calls = 0;
    bool isOpen = false;
    PsetData::getPsetShadowDbReadWriteCallbackSet([&] {
        EXPECT_FALSE(std::exchange(isOpen, true));
        ++calls;
        return std::pair(shadows, ScopeGuard([&isOpen] { isOpen = false; }));
    });
    PropertyEdit edit;
    edit.set = "Pset_WallCommon";
    edit.property = "FireRating";
    edit.values = {"F30"};
    EXPECT_TRUE(overlay.check(wall, edit));
    EXPECT_EQ(calls, 0);
    for (const Outcome& outcome : overlay.setAll({{wall, edit}, {door, edit}})) {
        EXPECT_TRUE(outcome);
    }
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(overlay.unset(door, "Pset_WallCommon", "FireRating"));
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "5:F30");
    EXPECT_EQ(readingOf(door, "Pset_WallCommon", "FireRating"), "0:");
}

TEST_F(OverlayTest, leavesABoundThatIsNotGivenWithoutContent) {
    EXPECT_TRUE(overlay.set(wall, "Own", "Range A", Bounds{{}, {}, "middle"}));
    const auto shadow = std::dynamic_pointer_cast<FcObjectDefinition>(shadows->data().findByGuid(wall));
    const auto set = shadow->getPropertySetDefinitionNonConst<fc::core::kernel::FcPropertySet>("Own");
    const auto range = std::static_pointer_cast<fc::FcPropertyBoundedValue>(set->findProperty("Range A"));
    EXPECT_TRUE(range->setPointValue.hasContent());
    EXPECT_FALSE(range->lowerBoundValue.hasContent() || range->upperBoundValue.hasContent());
}

TEST_F(OverlayTest, knowsAnEditHoweverItIsSpelledAndKeepsWhatItDoesNotUnderstand) {
    addEdits(wall, {R"(Pset_WallCommon.FireRating single F30 by "Ben" at noon)",
                    R"("Pset_WallCommon"."FireRating" single "F30" by "Ben" at 2099-01-01T00:00:00Z)"});
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "FireRating", "F90"));
    EXPECT_EQ(storedLines(), (std::vector<std::string>{R"(Pset_WallCommon.FireRating single F30)",
                                                       R"(Pset_WallCommon.FireRating single "F90")"}));
    EXPECT_EQ(overlay.restore().size(), 1U);
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "5:F90");
}

TEST_F(OverlayTest, restoresTheLatestOfSeveralPeoplesEdits) {
    addEdits(wall, {R"(Pset_WallCommon.FireRating single "F30" by "Ben" at 2022-01-01T00:00:00Z)",
                    R"(Pset_WallCommon.Reference single "W1" by "Ben" at 2090-01-01T00:00:00Z)",
                    R"(Pset_WallCommon.Status enumerated "NEW" by "Ben" at 2022-01-01T00:00:00Z)"});
    addEdits(wall,
             {R"(Pset_WallCommon.FireRating single "F90" by "Anna" at 2023-01-01T00:00:00Z)",
              R"(Pset_WallCommon.Reference single "W2" by "Anna" at 2023-01-01T00:00:00Z)",
              R"(Pset_WallCommon.Combustible single false by "Anna" at 2023-01-01T00:00:00Z)", "Pset_WallCommon?"});
    addEdits(wall, {R"(Pset_Gone.P single 1 by "" at 2023-01-01T00:00:00Z)",
                    R"(Pset_WallCommon.IsExternal single "maybe" by "" at 2023-01-01T00:00:00Z)"});
    addEdits(nothing, {R"(Pset_WallCommon.Status enumerated "NEW" by "" at 2023-01-01T00:00:00Z)",
                       R"(Pset_WallCommon.Reference unset by "" at 2023-01-01T00:00:00Z)"});
    std::string unrestored;
    for (const auto& [id, line, outcome] : overlay.restore()) {
        unrestored += line.substr(0, line.find(" by ")) + ' ' + std::to_string(static_cast<int>(outcome.result)) + '\n';
    }
    EXPECT_EQ(unrestored, "Pset_WallCommon? 7\nPset_Gone.P single 1 2\nPset_WallCommon.IsExternal single \"maybe\" 5\n"
                          "Pset_WallCommon.Status enumerated \"NEW\" 3\n");
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "5:F90");
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "Reference"), "5:W1");
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "Status"), "5:NEW");

    // It takes the place of the edit that there is.
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "Combustible", true));
    const std::string content = tests::contentOf(path);
    EXPECT_EQ(content.find("Combustible"), content.rfind("Combustible"));

    // What is set now is later than what came from a clock that is ahead.
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "Reference", "W3"));
    forgetShadows();
    overlay.restore();
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "Reference"), "5:W3");
    EXPECT_NE(tests::contentOf(path).find(R"(Reference single "W3" by "Anna" at 2090-01-01T00:00:00.001Z)"),
              std::string::npos);
}

} // namespace
} // namespace orv::host::overlaytest

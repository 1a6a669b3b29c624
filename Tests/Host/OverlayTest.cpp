#include "Host/Overlay.h"

#include "FoundationClasses/FcPropertyBoundedValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/OverlayReading.h"
#include "Support/StoreTest.h"
#include "Utilities/FileLock.h"

#include <sstream>

namespace orv::host {
namespace {

using domain::shared::enhancementsforreferencemodel::PsetData;
using fc::core::kernel::FcObjectDefinition;
using object::PropertyValue;
using tests::Enhancements;
using tests::readingOf;
using Values = std::vector<PropertyValue>;
using Rows = std::vector<std::pair<PropertyValue, PropertyValue>>;

/// A model of a wall and a door, and an overlay of it.
class OverlayTest : public tests::StoreTest {
protected:
    OverlayTest() {
        masters->entityCreate("IfcWall")->guid = wall;
        masters->entityCreate("IfcDoor")->guid = door;
        masters->entityCreate("IfcRelAggregates")->guid = relation;
        PsetData::getObjectFromGuidCallbackSet(findInModel);
        forgetShadows();
        std::istringstream own(R"(<PropertySetDef><Name>Own</Name><PropertyDefs>
<PropertyDef><Name>Table</Name><PropertyType><TypePropertyTableValue><DefiningValue><DataType type="IfcInteger"/></DefiningValue>
<DefinedValue><DataType type="IfcLabel"/></DefinedValue></TypePropertyTableValue></PropertyType></PropertyDef>
<PropertyDef><Name>Range A</Name><PropertyType><TypePropertyBoundedValue><DataType type="IfcLabel"/>
</TypePropertyBoundedValue></PropertyType></PropertyDef>
<PropertyDef><Name>Range B</Name><PropertyType><TypePropertyReferenceValue/></PropertyType></PropertyDef>
</PropertyDefs></PropertySetDef>)");
        EXPECT_EQ(ifc::addDefinitions(own).reason, "");
    }

    /// As at the start of a program.
    void forgetShadows() {
        shadows = std::make_shared<fc::FcShadowDb>();
        PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return shadows; });
        PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(shadows, ScopeGuard()); });
    }

    /// The edits in the file, without author and time.
    std::vector<std::string> storedLines() const {
        std::vector<std::string> lines;
        std::istringstream content(tests::contentOf(path));
        for (std::string line; std::getline(content, line);) {
            if (line.find("<Edit>") != std::string::npos) {
                lines.push_back(line.substr(10, line.find(" by ") - 10));
            }
        }
        return lines;
    }

    static void addEdits(const Guid& id, std::vector<std::string> lines) {
        auto record = std::make_unique<PropertyEdits>();
        record->ownerId = id;
        record->lines = std::move(lines);
        std::unique_ptr<tests::EnhancementBase> added = std::move(record);
        Enhancements::addEnhancement(std::move(added));
    }

    const Guid wall{1, 0, 0, {}};
    const Guid door{2, 0, 0, {}};
    const Guid nothing{3, 0, 0, {}};
    const Guid relation{4, 0, 0, {}};
    std::shared_ptr<fc::Data> masters = std::make_shared<fc::Data>();
    std::shared_ptr<fc::FcShadowDb> shadows;
    const Overlay::FindObject findInModel = [this](const Guid& id) {
        return std::dynamic_pointer_cast<const FcObjectDefinition>(masters->findByGuid(id));
    };
    Overlay overlay{findInModel, "Anna"};
};

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

TEST_F(OverlayTest, tellsTheOutcomeAndChangesNothingWhenItRefuses) {
    using Result = Outcome::Result;
    struct Refusal {
        Outcome outcome;
        Result result;
        std::vector<std::string_view> names;
        const char* type;
    };
    const std::string common = "Pset_WallCommon";
    const Refusal refusals[] = {
        {overlay.set(wall, "Pset_WalCommon", "FireRating", "F90"), Result::NoSuchSet, {"Pset_WallCommon"}, ""},
        {overlay.set(wall, "own", "Table", "F90"), Result::NoSuchSet, {"Own"}, ""},
        {overlay.set(wall, common, "firerating", "F90"), Result::NoSuchProperty, {"FireRating"}, ""},
        {overlay.set(nothing, common, "FireRating", "F90"), Result::NoSuchObject, {}, ""},
        {overlay.set(relation, common, "FireRating", "F90"), Result::NoSuchObject, {}, ""},
        {overlay.set(wall, "Pset_ActionRequest", "RequestSourceName", "Anna"), Result::TakesNoValue, {}, ""},
        {overlay.set(wall, common, "ThermalTransmittance", "low"),
         Result::ValueRefused,
         {},
         "IfcThermalTransmittanceMeasure"},
        {overlay.set(wall, common, "FireRating", ""), Result::ValueRefused, {}, "IfcLabel"},
        {overlay.set(wall, common, "FireRating", PropertyValue()), Result::ValueRefused, {}, "IfcLabel"},
        {overlay.set(wall, common, "FireRating", Values{"F90"}), Result::ValueRefused, {}, "IfcLabel"},
        {overlay.set(wall, common, "Status", 5), Result::ValueRefused, {}, "IfcLabel"},
        {overlay.set(wall, common, "Status", Values{"NEW", "a;b"}), Result::ValueRefused, {}, "IfcLabel"},
        {overlay.set(wall, "Pset_AirTerminalTypeCommon", "AirFlowrateRange", 5),
         Result::ValueRefused,
         {},
         "bounds of IfcVolumetricFlowRateMeasure"},
        {overlay.set(wall, "Pset_AirTerminalTypeCommon", "AirFlowrateRange", Bounds{1, "much", {}}),
         Result::ValueRefused,
         {},
         "bounds of IfcVolumetricFlowRateMeasure"},
        {overlay.set(wall, "Pset_AirTerminalTypeCommon", "AirFlowrateRange", Bounds{}),
         Result::ValueRefused,
         {},
         "bounds of IfcVolumetricFlowRateMeasure"},
        {overlay.set(wall, "Pset_Address", "AddressLines", "a"), Result::ValueRefused, {}, "list of IfcLabel"},
        {overlay.set(wall, "Pset_Address", "AddressLines", Values{}), Result::ValueRefused, {}, "list of IfcLabel"},
        {overlay.set(wall, "Pset_Address", "AddressLines", Values{"a", PropertyValue()}),
         Result::ValueRefused,
         {},
         "list of IfcLabel"},
        {overlay.set(wall, "Own", "Table", Rows{{1, "a"}, {2.5, "b"}}),
         Result::ValueRefused,
         {},
         "table of IfcInteger to IfcLabel"},
        {overlay.set(wall, "Own", "range", 5), Result::NoSuchProperty, {"Range A", "Range B"}, ""},
        {overlay.set(wall, "Own", "Range A", Bounds{"a;b", {}, {}}), Result::ValueRefused, {}, "bounds of IfcLabel"},
        {overlay.set(wall, "Own", "Table", Rows{}), Result::ValueRefused, {}, "table of IfcInteger to IfcLabel"},
        {overlay.unset(wall, common, "FireRatin"), Result::NoSuchProperty, {"FireRating"}, ""},
        {overlay.unset(nothing, common, "FireRating"), Result::NoSuchObject, {}, ""},
        {overlay.unset(wall, common, "FireRating"), Result::Done, {}, ""},
    };
    for (const auto& [outcome, result, names, type] : refusals) {
        EXPECT_EQ(outcome.result, result) << &outcome - &refusals[0].outcome;
        EXPECT_EQ(outcome.nearestNames, names);
        EXPECT_EQ(outcome.neededType, type);
        EXPECT_FALSE(outcome.hasRemark());
    }
    EXPECT_TRUE(shadows->shadowObjects.empty());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(OverlayTest, remarksOnWhatItDoesAllTheSame) {
    const Outcome odd = overlay.set(wall, "Pset_WallCommon", "Status", "NEW;OLD");
    EXPECT_TRUE(odd && odd.isOutsideEnumeration && !odd.isOfOtherClass);
    const Outcome other = overlay.set(door, "Pset_WallCommon", "Status", "NEW");
    EXPECT_TRUE(other && !other.isOutsideEnumeration && other.isOfOtherClass);
    EXPECT_FALSE(
        overlay.set(wall, "Pset_Condition", "AssessmentDescription", "good").hasRemark()); // for any IfcElement
    EXPECT_FALSE(overlay.set(wall, "Own", "Table", Rows{{1, "a"}}).hasRemark());
}

TEST_F(OverlayTest, changesNothingWhenTheStoreRefuses) {
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "FireRating", "F30"));
    const std::string before = tests::contentOf(path);
    auto other = utilities::FileLock::tryLock(path, true, utilities::FileLock::Access::Read);
    ASSERT_TRUE(other);
    EXPECT_EQ(overlay.set(wall, "Pset_WallCommon", "FireRating", "F90").result, Outcome::Result::StoreRefused);
    EXPECT_EQ(overlay.set(wall, "Pset_WallCommon", "Status", "NEW").result, Outcome::Result::StoreRefused);
    EXPECT_EQ(overlay.set(door, "Pset_WallCommon", "FireRating", "F90").result, Outcome::Result::StoreRefused);
    EXPECT_EQ(overlay.unset(wall, "Pset_WallCommon", "FireRating").result, Outcome::Result::StoreRefused);
    other.reset();
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "5:F30");
    EXPECT_EQ(shadows->shadowObjects.size(), 1U);
    EXPECT_TRUE(Enhancements::saveChanges());
    EXPECT_EQ(tests::contentOf(path), before);
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

TEST_F(OverlayTest, makesManyEditsByOneRewriteOrNone) {
    const auto edit = [](const Guid& id, const std::string& property, PropertyEdit::Form form,
                         std::vector<PropertyValue> values) {
        ObjectEdit made{id, {}};
        made.edit.set = "Pset_WallCommon";
        made.edit.property = property;
        made.edit.form = form;
        made.edit.values = std::move(values);
        return made;
    };
    using Form = PropertyEdit::Form;
    EXPECT_TRUE(overlay.set(wall, "Pset_WallCommon", "Reference", "W1"));
    const std::vector<std::string> before = storedLines();
    std::vector<ObjectEdit> edits = {
        edit(wall, "FireRating", Form::Single, {"F30"}), edit(door, "FireRating", Form::Single, {"F60"}),
        edit(wall, "Reference", Form::Unset, {}), edit(wall, "IsExternal", Form::Single, {"perhaps"})};
    std::vector<Outcome> outcomes = overlay.setAll(edits);
    EXPECT_EQ(outcomes[3].result, Outcome::Result::ValueRefused);
    EXPECT_TRUE(outcomes[1] && outcomes[1].isOfOtherClass);
    EXPECT_EQ(storedLines(), before);
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "0:");

    const std::tuple<const char*, const char*, Form, std::size_t> ofOtherForms[] = {
        {"Pset_WallCommon", "FireRating", Form::Single, 0},
        {"Pset_WallCommon", "FireRating", Form::Single, 2},
        {"Own", "Range A", Form::Bounded, 2},
        {"Own", "Range A", Form::Bounded, 4},
        {"Own", "Table", Form::Table, 3}};
    for (const auto& [set, property, form, count] : ofOtherForms) {
        edits[3] = edit(wall, property, form, std::vector<PropertyValue>(count, 1));
        edits[3].edit.set = set;
        EXPECT_EQ(overlay.setAll(edits)[3].result, Outcome::Result::ValueRefused) << property << ' ' << count;
    }
    EXPECT_EQ(storedLines(), before);

    edits[3] = edit(wall, "FireRating", Form::Single, {"F90"}); // the later one of a property counts
    outcomes = overlay.setAll(edits);
    EXPECT_TRUE(std::all_of(outcomes.begin(), outcomes.end(), [](const Outcome& outcome) { return bool(outcome); }));
    EXPECT_EQ(storedLines(),
              (std::vector<std::string>{"Pset_WallCommon.Reference unset", R"(Pset_WallCommon.FireRating single "F90")",
                                        R"(Pset_WallCommon.FireRating single "F60")"}));
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "FireRating"), "5:F90");
    EXPECT_EQ(readingOf(wall, "Pset_WallCommon", "Reference"), "0:");
    EXPECT_EQ(readingOf(door, "Pset_WallCommon", "FireRating"), "5:F60");
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
} // namespace orv::host

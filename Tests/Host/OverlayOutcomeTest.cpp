#include "Host/OverlayTest.h"
#include "Utilities/FileLock.h"

namespace orv::host::overlaytest {
namespace {

class OverlayOutcomeTest : public OverlayTest {};

TEST_F(OverlayOutcomeTest, tellsTheOutcomeAndChangesNothingWhenItRefuses) {
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

TEST_F(OverlayOutcomeTest, remarksOnWhatItDoesAllTheSame) {
    const Outcome odd = overlay.set(wall, "Pset_WallCommon", "Status", "NEW;OLD");
    EXPECT_TRUE(odd && odd.isOutsideEnumeration && !odd.isOfOtherClass);
    const Outcome other = overlay.set(door, "Pset_WallCommon", "Status", "NEW");
    EXPECT_TRUE(other && !other.isOutsideEnumeration && other.isOfOtherClass);
    EXPECT_FALSE(
        overlay.set(wall, "Pset_Condition", "AssessmentDescription", "good").hasRemark()); // for any IfcElement
    EXPECT_FALSE(overlay.set(wall, "Own", "Table", Rows{{1, "a"}}).hasRemark());
}

TEST_F(OverlayOutcomeTest, changesNothingWhenTheStoreRefuses) {
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

TEST_F(OverlayOutcomeTest, makesManyEditsByOneRewriteOrNone) {
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

} // namespace
} // namespace orv::host::overlaytest

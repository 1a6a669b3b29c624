#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/OverlayReading.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <unistd.h>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;
using object::PropertyValue;
using Property = std::pair<std::string, std::string>;
using Rows = std::vector<std::pair<PropertyValue, PropertyValue>>;
using Values = std::vector<PropertyValue>;

const Guid wallId{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
const std::string wallSet = "Pset_WallCommon";
const Property fireRating{wallSet, "FireRating"};
const Property bounded{"Pset_AirTerminalBoxTypeCommon", "AirPressureRange"};
const Property list{"Pset_Address", "AddressLines"};
const Property table{"Pset_AirTerminalPHistory", "InductionRatio"};
const std::string source = "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData:";
const std::string scope = "orv::domain::shared::enhancementsforreferencemodel::PsetData::";

/// What a destructor does that runs after those of everything that a test makes.
std::function<void()> lastAction;
const ScopeGuard runsLastAction([] {
    if (lastAction) {
        lastAction();
    }
});

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

struct Write {
    PropertyValue value;
    std::string read;
    int reports = 0;
};

TEST_F(PsetDataTest, changesASingleEnumeratedOrBoundedPropertyWithEachWrite) {
    const std::pair<Property, std::vector<Write>> properties[] = {
        // clang-format off
        {{wallSet, "ThermalTransmittance"},
         {{PropertyValue(), "0:"}, {0.25, "4:0.25"}, {"", "4:0.25"}, {std::optional<std::string>(""), "4:0.25"},
          {"2.5", "4:2.5"}, {std::optional<std::string>("3"), "4:3"}, {7, "4:7"}, {" ", "0:"}, {"1", "4:1"}, {true, "0:"},
          {2, "4:2"}, {std::optional<double>(), "0:"}}},
        {fireRating, {{"a;b", "5:a;b"}, {5, "5:5"}}},
        {{wallSet, "IsExternal"}, {{true, "3:true"}, {"false", "3:false"}, {1, "0:"}}},
        {{wallSet, "Status"},
         {{"a;b", "5:a;b"}, {"c", "5:c"}, {";", "5:"}, {"a;;b;", "5:a;;b"}, {";b", "5:;b"}, {5.0, "0:"}, {"5", "5:5"},
          {std::optional<std::string>("a"), "0:"}}},
        {bounded,
         {{"1;2;3", "5:2;1;3"}, {7, "5:;7;"}, {"4;5;6", "5:5;4;6"}, {1.5, "5:;1.5;"}, {";2", "5:2;;"},
          {"1;2;3;4", "5:2;1;3"}, {"x", "5:;;"}, {"1;2", "5:2;1;"}, {true, "5:;;", 1},
          {std::numeric_limits<double>::quiet_NaN(), "5:;;"},
          {std::optional<std::string>("1"), "5:;;", 1}, {"-1", "5:;-1;"}, {"", "5:;-1;"}, {1e-7, "5:;0;"}, {"1;a", "5:a;1;"}}},
        // clang-format on
        {{bounded.first, "AirFlowRateRange"}, {{"a;b;c", "5:;;"}}},
        {{wallSet, "firerating"}, {{"F90", "0:"}}},
        {{"Pset_wallcommon", "FireRating"}, {{"F90", "0:"}, {"F90", "0:"}}},
        {list, {{"a", "0:"}}},
        {{"Pset_ActionRequest", "RequestSourceName"}, {{"a", "0:"}}},
    };
    const std::string expected = source + "188: " + scope + "setValue: Only implemented for string, double and int";
    for (const auto& [property, writes] : properties) {
        for (std::size_t index = 0; index < writes.size(); ++index) {
            set(property, writes[index].value);
            EXPECT_EQ(get(property), writes[index].read) << property.second << " write " << index;
            const auto count = static_cast<std::size_t>(writes[index].reports);
            EXPECT_EQ(takeReports(), tests::Reports(count, expected)) << property.second;
        }
    }
}

TEST_F(PsetDataTest, leavesShadowObjectAndSetBehindButNoPropertyWhenAWriteChangesNothing) {
    set(fireRating, PropertyValue());
    set({"Pset_Unknown", "FireRating"}, PropertyValue("F90"));
    set(list, Values());
    set(table, Rows());
    EXPECT_EQ(propertyCount(), 0U);
    EXPECT_EQ(database->shadowObjects.front()->propertySetDefinitions.size(), 4U);
}

TEST_F(PsetDataTest, fillsListsAndTablesOnceAndThoseOfAnotherKindNever) {
    set(list, Values{"a", PropertyValue(), 3});
    set(list, Values{"b"});
    EXPECT_EQ(get(list), "0:|5:a|0:|5:3");
    set(table, Rows{{1, 2.5}, {"x", "4"}});
    set(table, Rows{{9, 9}});
    EXPECT_EQ(get(table), "0:|4:1=4:2.5|0:=4:4");

    set(fireRating, Values{"a"});
    EXPECT_EQ(propertyCount(), 3U);
    EXPECT_EQ(get(fireRating), "0:");
    set(fireRating, PropertyValue("F90"));
    set(fireRating, Rows{{1, 2}});
    EXPECT_EQ(get(fireRating), "5:F90");
}

TEST_F(PsetDataTest, readsATableWhoseListsDifferInLengthAsNoRows) {
    set(table, Rows{{1, 2}, {3, 4}});
    const auto set = database->shadowObjects.front()->getPropertySetDefinitionNonConst<FcPropertySet>(table.first);
    auto& property = dynamic_cast<fc::FcPropertyTableValue&>(*set->properties.front());
    property.definedValues->pop_back();
    EXPECT_EQ(get(table), "0:");
    property.definedValues.reset();
    EXPECT_EQ(get(table), "0:");
}

TEST_F(PsetDataTest, takesOneBracketAtMostOffEachEndOfAnEnumerationText) {
    class Texts : public fc::FcPropertyEnumeratedValue {
    public:
        std::optional<std::string> getAttributeAsString(const std::string&) const override { return text; }
        std::optional<std::string> text;
    };
    const auto set =
        database->getShadowObject(*wall)->getOrCreatePropertySetDefinition<FcPropertySet>(database->data(), "Set");
    const auto property = std::make_shared<Texts>();
    property->name = "A";
    set->properties.push_back(property);
    const std::pair<std::optional<std::string>, std::string> texts[] = {
        {std::nullopt, "0:"}, {"()", "5:"}, {"((a))", "5:(a)"}, {"(a", "5:a"}, {"a)", "5:a"}, {"(", "5:"}};
    for (const auto& [text, read] : texts) {
        property->text = text;
        EXPECT_EQ(get({"Set", "A"}), read);
    }
    property->text = "";
    try {
        get({"Set", "A"});
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid string position");
    }
    this->set({"Set", "A"}, PropertyValue(5.0));
    EXPECT_TRUE(set->properties.empty());
}

TEST_F(PsetDataTest, convertsNothingInTheTypedGetters) {
    set(fireRating, PropertyValue("1"));
    set({wallSet, "ThermalTransmittance"}, PropertyValue(1.5));
    set({wallSet, "IsExternal"}, PropertyValue(true));
    PsetData overlay;
    EXPECT_EQ(overlay.getValueAsString(wallId, wallSet, "FireRating"), "1");
    EXPECT_EQ(overlay.getValueAsDouble(wallId, wallSet, "FireRating"), std::nullopt);
    EXPECT_EQ(overlay.getValueAsBool(wallId, wallSet, "FireRating"), std::nullopt);
    EXPECT_EQ(overlay.getValueAsDouble(wallId, wallSet, "ThermalTransmittance"), 1.5);
    EXPECT_EQ(overlay.getValueAsBool(wallId, wallSet, "IsExternal"), true);
    EXPECT_EQ(overlay.getValueAsString(wallId, wallSet, "Reference"), std::nullopt);
    EXPECT_EQ(takeReports(), tests::Reports());
    EXPECT_EQ(overlay.getValueAsString(wallId, wallSet, "IsExternal"), "");
    EXPECT_EQ(takeReports().size(), 1U);
}

/// A value that the type takes, and how it reads back.
std::pair<PropertyValue, std::string> sampleOf(std::string_view typeName) {
    const auto* type = fc::FcValueType::find(typeName);
    const bool isTruth =
        type != nullptr && (type->content == fc::FcContent::Boolean || type->content == fc::FcContent::Logical);
    const PropertyValue value = isTruth ? PropertyValue(true) : PropertyValue(42);
    EXPECT_NE(tests::takenAs(typeName, value), "0:") << typeName;
    return {value, tests::takenAs(typeName, value)};
}

TEST_F(PsetDataTest, setsAndReadsEveryPublishedProperty) {
    using ifc::def::xml::PropertyKind;
    for (const auto& definition : ifc::definitions()) {
        const Property property(definition.propertySet, definition.property);
        const auto [value, text] = sampleOf(definition.valueType);
        const auto [defined, definedText] = sampleOf(definition.definedValueType);
        std::string expected = "0:";
        switch (definition.kind) {
        case PropertyKind::Single:
            set(property, value);
            expected = text;
            break;
        case PropertyKind::Enumerated:
            expected = "5:" + std::string(definition.enumerationValues) + ";A";
            set(property, PropertyValue(expected.substr(2)));
            break;
        case PropertyKind::Bounded:
            set(property, PropertyValue("1;2;3"));
            expected = "5:2;1;3";
            break;
        case PropertyKind::List:
            set(property, Values{value, PropertyValue(), value});
            expected += '|' + text + "|0:|" + text;
            break;
        case PropertyKind::Table:
            set(property, Rows{{value, defined}});
            expected += '|' + text + '=' + definedText;
            break;
        default:
            set(property, value);
        }
        ASSERT_EQ(get(property), expected) << property.first << '.' << property.second;
    }
    EXPECT_EQ(propertyCount(), ifc::definitions().size());
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

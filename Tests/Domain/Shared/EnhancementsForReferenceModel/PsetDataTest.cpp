#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertySingleValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

#include <clocale>

namespace orv::domain::shared::enhancementsforreferencemodel {
namespace {

using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;
using object::PropertyValue;
using tests::Report;
using Rows = std::vector<std::pair<PropertyValue, PropertyValue>>;
using Values = std::vector<PropertyValue>;

const Guid wallId{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
const std::string wallSet = "Pset_WallCommon";
const std::pair<std::string, std::string> bounded{"Pset_AirTerminalBoxTypeCommon", "AirPressureRange"};
const std::pair<std::string, std::string> list{"Pset_Address", "AddressLines"};
const std::pair<std::string, std::string> table{"Pset_AirTerminalPHistory", "InductionRatio"};

Report callbackReport() {
    return {"Could not set callback for PsetData",
            "orv::domain::shared::enhancementsforreferencemodel::PsetData::PsetData",
            "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData", 52};
}

/// A text that tells alternative and value apart.
std::string shown(const PropertyValue& value) {
    fc::FcValue text;
    text.updateValueFromPropertyValue(value);
    return std::to_string(value.getIndex()) + ':' + text.getAsString(false).value_or("");
}

class PsetDataTest : public tests::ReportTest {
protected:
    PsetDataTest() {
        wall->guid = wallId;
        PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return database; });
        PsetData::getPsetShadowDbReadWriteCallbackSet(
            [this] { return std::pair(database, ScopeGuard([this] { guardRan += database ? 1 : 0; })); });
        PsetData::getObjectFromGuidCallbackSet([this](const Guid& guid) {
            ++asked;
            return guid == wallId ? wall : nullptr;
        });
    }

    ~PsetDataTest() override {
        PsetData::getPsetShadowDbReadOnlyCallbackSet(nullptr);
        PsetData::getPsetShadowDbReadWriteCallbackSet(nullptr);
        PsetData::getObjectFromGuidCallbackSet(nullptr);
    }

    template <typename Value>
    void set(const std::pair<std::string, std::string>& property, const Value& value) {
        PsetData(false).setValue(wallId, property.first, property.second, value);
    }

    std::string get(const std::pair<std::string, std::string>& property) {
        return shown(PsetData().getValue(wallId, property.first, property.second));
    }

    /// The number of properties in the sets of the wall's shadow object, or -1 without one.
    int propertyCount() {
        const auto shadow = std::dynamic_pointer_cast<FcObjectDefinition>(database->data().findByGuid(wallId));
        if (!shadow) {
            return -1;
        }
        std::size_t count = 0;
        for (const auto& set : shadow->propertySetDefinitions) {
            count += std::dynamic_pointer_cast<FcPropertySet>(set)->properties.size();
        }
        return static_cast<int>(count);
    }

    std::shared_ptr<fc::FcShadowDb> database = std::make_shared<fc::FcShadowDb>();
    std::shared_ptr<FcObjectDefinition> wall = std::make_shared<FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
    int asked = 0;
    int guardRan = 0;
};

TEST_F(PsetDataTest, reportsAMissingCallbackOfItsModeAndDoesNothingWithoutADatabase) {
    const auto useAll = [](PsetData& overlay) {
        const auto object = std::make_shared<FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
        EXPECT_EQ(overlay.getDb(), nullptr);
        overlay.setValue(wallId, wallSet, "FireRating", PropertyValue("F90"));
        overlay.setValue(object, wallSet, "FireRating", PropertyValue("F90"));
        overlay.setValue(object, list.first, list.second, Values{1});
        overlay.setValue(object, table.first, table.second, Rows{{1, 2}});
        EXPECT_TRUE(overlay.getValue(wallId, wallSet, "FireRating").isEmpty());
        EXPECT_FALSE(overlay.getValueAsString(wallId, wallSet, "FireRating"));
        EXPECT_FALSE(overlay.getValueAsDouble(wallId, wallSet, "FireRating"));
        EXPECT_FALSE(overlay.getValueAsBool(wallId, wallSet, "FireRating"));
        EXPECT_TRUE(overlay.getListValues(wallId, list.first, list.second).empty());
        EXPECT_TRUE(overlay.getTableValues(wallId, table.first, table.second).empty());
    };
    for (const bool readOnly : {true, false}) {
        PsetData::getPsetShadowDbReadOnlyCallbackSet(nullptr);
        PsetData::getPsetShadowDbReadWriteCallbackSet(nullptr);
        if (readOnly) {
            PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(database, ScopeGuard()); });
        } else {
            PsetData::getPsetShadowDbReadOnlyCallbackSet([this] { return database; });
        }
        PsetData overlay(readOnly);
        EXPECT_EQ(takeReports(), std::vector{callbackReport()});
        useAll(overlay);
    }
    PsetData::getPsetShadowDbReadOnlyCallbackSet([] { return std::shared_ptr<fc::FcShadowDb>(); });
    PsetData overlay;
    useAll(overlay);
    EXPECT_EQ(asked, 0);
}

TEST_F(PsetDataTest, runsTheGuardOnceBeforeItLetsGoOfTheDatabase) {
    std::weak_ptr<fc::FcShadowDb> watched = database;
    bool wasAlive = false;
    PsetData::getPsetShadowDbReadWriteCallbackSet([&] {
        return std::pair(std::exchange(database, nullptr), ScopeGuard([&] {
                             wasAlive = !watched.expired();
                             ++guardRan;
                         }));
    });
    {
        PsetData overlay(false);
        EXPECT_EQ(guardRan, 0);
    }
    EXPECT_EQ(guardRan, 1);
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(watched.expired());
}

TEST_F(PsetDataTest, asksTheModelOnceAndOnlyForWrites) {
    EXPECT_EQ(get({wallSet, "FireRating"}), "0:");
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(propertyCount(), -1);
    set({wallSet, "FireRating"}, PropertyValue("F90"));
    set({wallSet, "FireRating"}, PropertyValue("F60"));
    set(list, Values{"a"});
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(get({wallSet, "FireRating"}), "5:F60");
    EXPECT_EQ(database->shadowObjects.size(), 1U);
    EXPECT_TRUE(wall->propertySetDefinitions.empty());
    const Guid unknown;
    PsetData(false).setValue(unknown, wallSet, "FireRating", PropertyValue("F90"));
    PsetData::getObjectFromGuidCallbackSet(nullptr);
    PsetData(false).setValue(unknown, wallSet, "FireRating", PropertyValue("F90"));
    set({wallSet, "FireRating"}, PropertyValue("F30"));
    EXPECT_EQ(get({wallSet, "FireRating"}), "5:F30");
    EXPECT_EQ(database->shadowObjects.size(), 1U);
}

struct Write {
    PropertyValue value;
    std::string read;
    int reports = 0;
};

TEST_F(PsetDataTest, changesASingleEnumeratedOrBoundedPropertyWithEachWrite) {
    const std::pair<std::pair<std::string, std::string>, std::vector<Write>> properties[] = {
        // clang-format off
        {{wallSet, "ThermalTransmittance"},
         {{PropertyValue(), "0:"}, {0.25, "4:0.25"}, {"", "4:0.25"}, {std::optional<std::string>(""), "4:0.25"},
          {"2.5", "4:2.5"}, {std::optional<std::string>("3"), "4:3"}, {7, "4:7"}, {" ", "0:"}, {"1", "4:1"}, {true, "0:"},
          {2, "4:2"}, {std::optional<double>(), "0:"}}},
        {{wallSet, "FireRating"}, {{"a;b", "5:a;b"}, {5, "5:5"}}},
        {{wallSet, "IsExternal"}, {{true, "3:true"}, {"false", "3:false"}, {1, "0:"}}},
        {{wallSet, "Status"},
         {{"a;b", "5:a;b"}, {"c", "5:c"}, {";", "5:"}, {"a;;b;", "5:a;;b"}, {";b", "5:;b"}, {5.0, "0:"}, {"5", "5:5"},
          {std::optional<std::string>("a"), "0:"}}},
        {bounded,
         {{"1;2;3", "5:2;1;3"}, {7, "5:;7;"}, {"4;5;6", "5:5;4;6"}, {1.5, "5:;1.5;"}, {";2", "5:2;;"},
          {"1;2;3;4", "5:2;1;3"}, {"x", "5:;;"}, {"1;2", "5:2;1;"}, {true, "5:;;", 1},
          {std::optional<std::string>("1"), "5:;;", 1}, {"-1", "5:;-1;"}, {"", "5:;-1;"}, {1e-7, "5:;0;"}, {"1;a", "5:a;1;"}}},
        // clang-format on
        {{wallSet, "firerating"}, {{"F90", "0:"}}},
        {{"Pset_wallcommon", "FireRating"}, {{"F90", "0:"}, {"F90", "0:"}}},
        {list, {{"a", "0:"}}},
        {{"Pset_ActionRequest", "RequestSourceName"}, {{"a", "0:"}}},
    };
    const Report expected{"Only implemented for string, double and int",
                          "orv::domain::shared::enhancementsforreferencemodel::PsetData::setValue",
                          "Source/Domain/Shared/EnhancementsForReferenceModel/PsetData", 188};
    for (const auto& [property, writes] : properties) {
        for (std::size_t index = 0; index < writes.size(); ++index) {
            set(property, writes[index].value);
            EXPECT_EQ(get(property), writes[index].read) << property.second << " write " << index;
            const auto count = static_cast<std::size_t>(writes[index].reports);
            EXPECT_EQ(takeReports(), std::vector<Report>(count, expected)) << property.second;
        }
    }
}

TEST_F(PsetDataTest, understandsTheNumbersThatItFormatsUnderALocaleWithADecimalComma) {
    ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
    set(bounded, PropertyValue(1.5));
    EXPECT_EQ(get(bounded), "5:;1.5;");
}

TEST_F(PsetDataTest, leavesShadowObjectAndSetBehindButNoPropertyWhenAWriteChangesNothing) {
    set({wallSet, "FireRating"}, PropertyValue());
    EXPECT_EQ(propertyCount(), 0);
    set({"Pset_Unknown", "FireRating"}, PropertyValue("F90"));
    set({"Pset_List", "A"}, Values());
    set({"Pset_Table", "A"}, Rows());
    EXPECT_EQ(propertyCount(), 0);
    EXPECT_EQ(database->shadowObjects.front()->propertySetDefinitions.size(), 4U);
}

TEST_F(PsetDataTest, fillsListsAndTablesOnceAndKeepsThePlaceOfWhatHoldsNothing) {
    set(list, Values{"a", PropertyValue(), 3});
    set(list, Values{"b"});
    std::string read;
    for (const PropertyValue& value : PsetData().getListValues(wallId, list.first, list.second)) {
        read += shown(value) + '|';
    }
    EXPECT_EQ(read, "5:a|0:|5:3|");
    EXPECT_EQ(get(list), "0:");
    EXPECT_TRUE(PsetData().getTableValues(wallId, list.first, list.second).empty());

    set(table, Rows{{1, 2.5}, {"x", "4"}});
    set(table, Rows{{9, 9}});
    read.clear();
    for (const auto& [defining, defined] : PsetData().getTableValues(wallId, table.first, table.second)) {
        read += shown(defining) + '=' + shown(defined) + '|';
    }
    EXPECT_EQ(read, "4:1=4:2.5|0:=4:4|");
    EXPECT_TRUE(PsetData().getListValues(wallId, table.first, table.second).empty());
}

TEST_F(PsetDataTest, makesThePropertyOfAnotherKindWithoutValuesWhenAListOrTableIsWrittenToIt) {
    set({wallSet, "FireRating"}, Values{"a"});
    EXPECT_EQ(get({wallSet, "FireRating"}), "0:");
    set(list, Rows{{1, 2}});
    EXPECT_TRUE(PsetData().getListValues(wallId, list.first, list.second).empty());
    EXPECT_EQ(propertyCount(), 2);
    set({wallSet, "FireRating"}, PropertyValue("F90"));
    set({wallSet, "FireRating"}, Values{"a"});
    EXPECT_EQ(get({wallSet, "FireRating"}), "5:F90");
}

TEST_F(PsetDataTest, readsATableWhoseListsDifferInLengthAsNoRows) {
    set(table, Rows{{1, 2}, {3, 4}});
    const auto set = database->shadowObjects.front()->getPropertySetDefinitionNonConst<FcPropertySet>(table.first);
    auto& property = dynamic_cast<fc::FcPropertyTableValue&>(*set->properties.front());
    property.definedValues->pop_back();
    EXPECT_TRUE(PsetData().getTableValues(wallId, table.first, table.second).empty());
    property.definedValues.reset();
    EXPECT_TRUE(PsetData().getTableValues(wallId, table.first, table.second).empty());
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
        PsetData().getValueAsString(wallId, "Set", "A");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid string position");
    }
    this->set({"Set", "A"}, PropertyValue(5.0));
    EXPECT_TRUE(set->properties.empty());
}

TEST_F(PsetDataTest, convertsNothingInTheTypedGetters) {
    set({wallSet, "FireRating"}, PropertyValue("1"));
    set({wallSet, "ThermalTransmittance"}, PropertyValue(1.5));
    set({wallSet, "IsExternal"}, PropertyValue(true));
    PsetData overlay;
    EXPECT_EQ(overlay.getValueAsString(wallId, wallSet, "FireRating"), "1");
    EXPECT_EQ(overlay.getValueAsDouble(wallId, wallSet, "FireRating"), std::nullopt);
    EXPECT_EQ(overlay.getValueAsBool(wallId, wallSet, "FireRating"), std::nullopt);
    EXPECT_EQ(overlay.getValueAsDouble(wallId, wallSet, "ThermalTransmittance"), 1.5);
    EXPECT_EQ(overlay.getValueAsBool(wallId, wallSet, "IsExternal"), true);
    EXPECT_EQ(overlay.getValueAsString(wallId, wallSet, "Reference"), std::nullopt);
    EXPECT_TRUE(takeReports().empty());
    EXPECT_EQ(overlay.getValueAsString(wallId, wallSet, "IsExternal"), "");
    EXPECT_EQ(takeReports().size(), 1U);
}

/// A value that the type takes, and how it reads back.
std::pair<PropertyValue, std::string> sampleOf(std::string_view typeName) {
    const auto* type = fc::FcValueType::find(typeName);
    if (type == nullptr || type->content == fc::FcContent::Text) {
        return {"a text", "5:a text"};
    }
    switch (type->content) {
    case fc::FcContent::Integer:
        return {42, "1:42"};
    case fc::FcContent::Boolean:
        return {true, "3:true"};
    case fc::FcContent::Logical:
        return {object::Logical::Unknown, "2:unknown"};
    default:
        return {0.125, "4:0.125"};
    }
}

TEST_F(PsetDataTest, setsAndReadsEveryPublishedProperty) {
    using ifc::def::xml::PropertyKind;
    std::size_t count = 0;
    for (const auto& definition : ifc::definitions()) {
        const std::pair<std::string, std::string> property{definition.propertySet, definition.property};
        const auto [value, read] = sampleOf(definition.valueType);
        PsetData overlay(false);
        switch (definition.kind) {
        case PropertyKind::Single:
            set(property, value);
            EXPECT_EQ(get(property), read) << property.first << '.' << property.second;
            break;
        case PropertyKind::Enumerated:
            set(property, PropertyValue(std::string(definition.enumerationValues) + ";A"));
            EXPECT_EQ(get(property), "5:" + std::string(definition.enumerationValues) + ";A") << property.second;
            break;
        case PropertyKind::Bounded:
            set(property, PropertyValue("1;2;3"));
            EXPECT_EQ(get(property), "5:2;1;3") << property.first << '.' << property.second;
            break;
        case PropertyKind::List: {
            set(property, Values{value, PropertyValue(), value});
            const auto values = overlay.getListValues(wallId, property.first, property.second);
            ASSERT_EQ(values.size(), 3U) << property.first << '.' << property.second;
            EXPECT_EQ(shown(values[0]) + shown(values[1]) + shown(values[2]), read + "0:" + read) << property.second;
            break;
        }
        case PropertyKind::Table: {
            const auto [definedValue, definedRead] = sampleOf(definition.definedValueType);
            set(property, Rows{{value, definedValue}});
            const auto rows = overlay.getTableValues(wallId, property.first, property.second);
            ASSERT_EQ(rows.size(), 1U) << property.first << '.' << property.second;
            EXPECT_EQ(shown(rows[0].first) + shown(rows[0].second), read + definedRead) << property.second;
            break;
        }
        default:
            set(property, value);
            EXPECT_EQ(get(property), "0:") << property.first << '.' << property.second;
        }
        ++count;
    }
    EXPECT_EQ(count, 4501U);
    EXPECT_EQ(propertyCount(), 4501);
}

} // namespace
} // namespace orv::domain::shared::enhancementsforreferencemodel

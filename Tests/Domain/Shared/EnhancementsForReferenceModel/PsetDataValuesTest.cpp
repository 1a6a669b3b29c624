#include "Domain/Shared/EnhancementsForReferenceModel/PsetDataTest.h"
#include "FoundationClasses/FcPropertyEnumeratedValue.h"
#include "FoundationClasses/FcPropertyTableValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <limits>

namespace orv::domain::shared::enhancementsforreferencemodel::psetdatatest {
namespace {

class PsetDataValuesTest : public PsetDataTest {};

struct Write {
    PropertyValue value;
    std::string read;
    int reports = 0;
};

TEST_F(PsetDataValuesTest, changesASingleEnumeratedOrBoundedPropertyWithEachWrite) {
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

TEST_F(PsetDataValuesTest, leavesShadowObjectAndSetBehindButNoPropertyWhenAWriteChangesNothing) {
    set(fireRating, PropertyValue());
    set({"Pset_Unknown", "FireRating"}, PropertyValue("F90"));
    set(list, Values());
    set(table, Rows());
    EXPECT_EQ(propertyCount(), 0U);
    EXPECT_EQ(database->shadowObjects.front()->propertySetDefinitions.size(), 4U);
}

TEST_F(PsetDataValuesTest, fillsListsAndTablesOnceAndThoseOfAnotherKindNever) {
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

TEST_F(PsetDataValuesTest, readsATableWhoseListsDifferInLengthAsNoRows) {
    set(table, Rows{{1, 2}, {3, 4}});
    const auto set = database->shadowObjects.front()->getPropertySetDefinitionNonConst<FcPropertySet>(table.first);
    auto& property = dynamic_cast<fc::FcPropertyTableValue&>(*set->properties.front());
    property.definedValues->pop_back();
    EXPECT_EQ(get(table), "0:");
    property.definedValues.reset();
    EXPECT_EQ(get(table), "0:");
}

TEST_F(PsetDataValuesTest, takesOneBracketAtMostOffEachEndOfAnEnumerationText) {
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

TEST_F(PsetDataValuesTest, convertsNothingInTheTypedGetters) {
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

TEST_F(PsetDataValuesTest, setsAndReadsEveryPublishedProperty) {
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
} // namespace orv::domain::shared::enhancementsforreferencemodel::psetdatatest

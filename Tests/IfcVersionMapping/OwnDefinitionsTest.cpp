#include "IfcVersionMapping/SchemaDefinitions.h"
#include "IfcVersionMapping/SetApplicability.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace orv::ifc {
namespace {

using def::xml::Def;

AddedDefinitions add(const std::string& document) {
    std::istringstream stream(document);
    return addDefinitions(stream, "office.xml");
}

/// A set of that name with those elements in its PropertyDefs.
std::string setOf(const std::string& name, const std::string& properties) {
    return "<PropertySetDef><Name>" + name + "</Name><PropertyDefs>\n" + properties +
           "</PropertyDefs></PropertySetDef>";
}

std::string property(const std::string& name, const std::string& type) {
    return "<PropertyDef><Name>" + name + "</Name><PropertyType>" + type + "</PropertyType></PropertyDef>\n";
}

const char* const label = "<TypePropertySingleValue><DataType type='IfcLabel'/></TypePropertySingleValue>";

/// Two sets as an office writes them, one of them that of IFC with properties of its own.
const char* const office = R"(<?xml version="1.0" encoding="UTF-8"?>
<o:Library xmlns:o="http://example.org"><o:Version>2</o:Version>
<PropertySetDef xmlns="http://example.org/psd" ifdguid="1">
  <IfcVersion version="IFC4"/>
  <Name> Office_Fire </Name>
  <Definition>What the brigade asks.</Definition>
  <ApplicableClasses><ClassName>IfcDoor</ClassName><ClassName/><ClassName>IfcWall/SHEAR</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef><Name>Tested</Name><PropertyType><TypePropertySingleValue><DataType type="IfcDate"/>
      <UnitType type="X"/></TypePropertySingleValue></PropertyType><NameAliases><Name>Getestet</Name></NameAliases></PropertyDef>
    <PropertyDef><Name>Class</Name><PropertyType><TypePropertyEnumeratedValue><EnumList name="E">
      <EnumItem>A &amp; B</EnumItem><EnumItem/><EnumItem> C </EnumItem></EnumList></TypePropertyEnumeratedValue></PropertyType></PropertyDef>
    <PropertyDef><Name>Minutes</Name><PropertyType><TypePropertyBoundedValue><DataType type="IfcReal"/></TypePropertyBoundedValue></PropertyType></PropertyDef>
    <PropertyDef><Name>Labs</Name><PropertyType><TypePropertyListValue><ListValue><DataType type="IfcText"/></ListValue></TypePropertyListValue></PropertyType></PropertyDef>
    <PropertyDef><Name>Curve</Name><PropertyType><TypePropertyTableValue><Expression/><DefiningValue><DataType type="IfcInteger"/></DefiningValue><DefinedValue><DataType type="IfcReal"/></DefinedValue></TypePropertyTableValue></PropertyType></PropertyDef>
    <PropertyDef><Name>Tester</Name><PropertyType><TypePropertyReferenceValue reftype="IfcPerson"/></PropertyType></PropertyDef>
    <PropertyDef><Name>Door</Name><PropertyType><TypeComplexProperty name="D"><PropertyDef><Name>Inner</Name></PropertyDef></TypeComplexProperty></PropertyType></PropertyDef>
  </PropertyDefs>
</PropertySetDef>
<PropertySetDef><Name>Pset_WallCommon</Name><ApplicableClasses><ClassName>IfcDoor</ClassName><ClassName>IfcWall</ClassName></ApplicableClasses><PropertyDefs>
  <PropertyDef><Name>FireRating</Name><PropertyType><TypePropertySingleValue><DataType type="IfcReal"/></TypePropertySingleValue></PropertyType></PropertyDef>
  <PropertyDef><Name>Colour</Name><PropertyType><TypePropertySingleValue/></PropertyType></PropertyDef>
</PropertyDefs></PropertySetDef>
</o:Library>
)";

std::string shown(const Def* definition) {
    if (definition == nullptr) {
        return "unknown";
    }
    std::string text(definition->propertySet);
    text.append(".").append(definition->property).append(" ");
    text += std::to_string(static_cast<int>(definition->kind));
    for (const auto part : {definition->valueType, definition->definedValueType, definition->enumerationValues}) {
        text.append("|").append(part);
    }
    return text.append("|").append(definition->source);
}

std::string classesOf(const std::string& pset) {
    std::string text;
    for (const auto& [name, type] : applicableClasses(pset)) {
        text.append(name).append(type.empty() ? "" : "/").append(type).append(" ");
    }
    return text;
}

TEST(OwnDefinitions, areKnownBesideThePublishedOnes) {
    EXPECT_TRUE(addedDefinitions().empty());
    const AddedDefinitions added = add(office);
    EXPECT_EQ(added.reason, "");
    EXPECT_EQ(added.properties, 8U);
    std::string all;
    for (const Def* definition : addedDefinitions()) {
        all += shown(definition) + '\n';
        EXPECT_EQ(findSchemaDefForProperty(std::string(definition->propertySet), std::string(definition->property)),
                  definition);
    }
    EXPECT_EQ(all, "Office_Fire.Tested 0|IfcDate|||office.xml\n"
                   "Office_Fire.Class 1|IfcLabel||A & B;C|office.xml\n"
                   "Office_Fire.Minutes 2|IfcReal|||office.xml\n"
                   "Office_Fire.Labs 3|IfcText|||office.xml\n"
                   "Office_Fire.Curve 4|IfcInteger|IfcReal||office.xml\n"
                   "Office_Fire.Tester 5|IfcPerson|||office.xml\n"
                   "Office_Fire.Door 6||||office.xml\n"
                   "Pset_WallCommon.Colour 0||||office.xml\n");
    EXPECT_EQ(shown(findSchemaDefForProperty("Pset_WallCommon", "FireRating")),
              "Pset_WallCommon.FireRating 0|IfcLabel|||IFC4X3_ADD2");
    EXPECT_EQ(shown(findSchemaDefForProperty("Office_Fire", "Inner")), "unknown");
    EXPECT_EQ(shown(findSchemaDefForProperty("Office_Water", "Class")), "unknown");
    EXPECT_EQ(definitions().size(), 4501U);
}

TEST(OwnDefinitions, ofAStreamThatCannotBeReadAreRefused) {
    std::ifstream missing("/there is none");
    EXPECT_EQ(addDefinitions(missing).reason, "the stream can't be read");
}

TEST(OwnDefinitions, comeFromSeveralFilesThatAgree) {
    EXPECT_EQ(add(setOf("A", property("P", label))).properties, 1U);
    EXPECT_EQ(add(setOf("A", property("P", label) + property("Q", label))).properties, 1U);
    const AddedDefinitions other = add(setOf("A", property("R", label) + property("P", "<TypeComplexProperty/>")));
    EXPECT_EQ(other.line, 3U);
    EXPECT_EQ(other.reason, "A.P is another in office.xml");
    EXPECT_EQ(findSchemaDefForProperty("A", "R"), nullptr);
}

TEST(OwnDefinitions, ofABadFileAreRefusedWithItsLine) {
    const std::string laughs = R"(<!DOCTYPE r [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">
<!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;"><!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;">
<!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;"><!ENTITY f "&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;">
<!ENTITY g "&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;"><!ENTITY h "&g;&g;&g;&g;&g;&g;&g;&g;&g;&g;">
<!ENTITY i "&h;&h;&h;&h;&h;&h;&h;&h;&h;&h;">]>
<r>&i;</r>)";
    const std::tuple<std::string, std::size_t, const char*> cases[] = {
        {"", 1, "no element found"},
        {"<PropertySets/>", 1, "there is no PropertySetDef"},
        {"<r>" + setOf("A", property("P", label)) + "\n</s>", 4, "mismatched tag"},
        {laughs, 6, "limit on input amplification factor (from DTD and entities) breached"},
        {"<r>\n" + setOf("", property("P", label)) + "</r>", 2, "a property set has no name"},
        {"<r>\n\n<PropertySetDef><Name>A</Name></PropertySetDef></r>", 3, "A has no properties"},
        {setOf("A", ""), 1, "A has no properties"},
        {setOf("A", property("P", label) + property(" ", label)), 3, "a property has no name"},
        {setOf("A", property("P", "")), 2, "P has no type of property that is known"},
        {setOf("A", property("P", "<TypePropertyOfAnotherKind/>")), 2, "P has no type of property that is known"},
        {setOf("A", property("P", label) + property("P", label)), 3, "A.P is defined twice"},
        {"<r>" + setOf("A", property("P", label)) + "\n" + setOf("A", property("P", label)) + "</r>", 5,
         "A.P is defined twice"},
        {setOf("A", property("P", "<TypePropertyEnumeratedValue><EnumList><EnumItem>a;b</EnumItem></EnumList>"
                                  "</TypePropertyEnumeratedValue>")),
         2, "a value of the enumeration has a semicolon: a;b"},
    };
    for (const auto& [document, line, reason] : cases) {
        const AddedDefinitions added = add(document);
        EXPECT_EQ(added.reason, reason);
        EXPECT_EQ(added.line, line) << reason;
    }
    const std::string whole = office;
    for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
        EXPECT_NE(add(whole.substr(0, length)).reason, "") << length;
    }
    EXPECT_TRUE(addedDefinitions().empty());
}

TEST(SetApplicability, isThePublishedOneAndThatOfAddedSets) {
    EXPECT_EQ(classesOf("Pset_ActionRequest"), "IfcActionRequest ");
    EXPECT_EQ(classesOf("Pset_ZoneCommon"), "IfcZone ");
    EXPECT_EQ(classesOf("Pset_BoilerTypeSteam"), "IfcBoiler/STEAM IfcBoilerType/STEAM ");
    EXPECT_EQ(classesOf("Pset_Condition"), "IfcAsset IfcElement IfcSystem IfcElementType ");
    EXPECT_EQ(classesOf("Pset_WallCommon"), "IfcWall IfcWallType ");
    EXPECT_EQ(classesOf("Office_Fire"), "");
    add(office);
    EXPECT_EQ(classesOf("Pset_WallCommon"), "IfcWall IfcWallType IfcDoor ");
    EXPECT_EQ(classesOf("Office_Fire"), "IfcDoor IfcWall/SHEAR ");
    int withoutClasses = 0;
    for (const Def& definition : definitions()) {
        withoutClasses += applicableClasses(std::string(definition.propertySet)).empty() ? 1 : 0;
    }
    EXPECT_EQ(withoutClasses, 0);
}

} // namespace
} // namespace orv::ifc

#include "Annotate/ModelDetails.h"

#include "Annotate/StepFile.h"
#include "FoundationClasses/IfcClass.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

class ModelDetailsTest : public ::testing::Test {
protected:
    ModelDetails read(const std::string& data) const {
        orv::tests::setContent(file, header + data + footer);
        return ModelDetails::read(file);
    }

    static const ModelObject& named(const ModelDetails& details, const std::string& name) {
        const auto& objects = details.getModel().getObjects();
        return *std::find_if(objects.begin(), objects.end(), [&](const auto& each) { return each.name == name; });
    }

    /// The sets of the wall W, in the form of "Set: Property=value unit<;".
    static std::string sets(const ModelDetails& details, const std::string& name = "W") {
        return text(details.setsOf(named(details, name)));
    }

    static std::string text(const std::vector<ModelSet>& sets) {
        std::string text;
        for (const ModelSet& set : sets) {
            text += set.name + (set.isQuantities ? "#" : "") + ": ";
            for (const ModelProperty& property : set.properties) {
                text += property.name + '=' + valuesText(property);
                text += unitText(property).empty() ? "" : ' ' + unitText(property);
                text += property.from.empty() ? ";" : '<' + property.from + ';';
            }
        }
        return text;
    }

    static std::string place(const ModelDetails& details, const std::string& name) {
        std::string text;
        for (const ModelObject* const part : details.placeOf(named(details, name))) {
            text += part->name + ' ';
        }
        const ModelObject* const storey = details.storeyOf(named(details, name));
        return text + "| " + (storey == nullptr ? "" : storey->name);
    }

    orv::tests::TemporaryDirectory directory;
    const std::filesystem::path file = directory / "a.ifc";
};

const std::string units =
    "#90=IFCPROJECT('p',$,'P',$,$,$,$,$,#91);#91=IFCUNITASSIGNMENT((#92,#93,#94,#95,#96,#97));"
    "#92=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);#93=IFCSIUNIT(*,.AREAUNIT.,.CENTI.,.SQUARE_METRE.);"
    "#94=IFCSIUNIT(*,.THERMODYNAMICTEMPERATUREUNIT.,$,.DEGREE_CELSIUS.);#95=IFCMONETARYUNIT('EUR');"
    "#96=IFCDERIVEDUNIT((#98,#99,#100),.THERMALTRANSMITTANCEUNIT.,$);"
    "#97=IFCCONVERSIONBASEDUNIT(#1,.PLANEANGLEUNIT.,'DEGREE',#101);"
    "#98=IFCDERIVEDUNITELEMENT(#102,1);#99=IFCDERIVEDUNITELEMENT(#103,-1);#100=IFCDERIVEDUNITELEMENT(#92,-2);"
    "#101=IFCMEASUREWITHUNIT(IFCRATIOMEASURE(0.5),#104);#102=IFCSIUNIT(*,.POWERUNIT.,.KILO.,.WATT.);"
    "#103=IFCSIUNIT(*,.THERMODYNAMICTEMPERATUREUNIT.,$,.KELVIN.);#104=IFCSIUNIT(*,.PLANEANGLEUNIT.,$,.RADIAN.);"
    "#105=IFCCONVERSIONBASEDUNITWITHOFFSET(#1,.THERMODYNAMICTEMPERATUREUNIT.,'fahrenheit',#106,-459.67);"
    "#106=IFCMEASUREWITHUNIT(IFCREAL(0.5555555555555556),#103);#107=IFCCONTEXTDEPENDENTUNIT(#1,.USERDEFINED.,'box');"
    "#108=IFCCONVERSIONBASEDUNIT(#1,.LENGTHUNIT.,'FOOT',#109);#109=IFCMEASUREWITHUNIT(IFCLENGTHMEASURE(304.8),#92);"
    "#110=IFCCONVERSIONBASEDUNIT(#1,.LENGTHUNIT.,'loop',#111);#111=IFCMEASUREWITHUNIT(IFCREAL(2.),#110);"
    "#112=IFCDERIVEDUNIT((#98,#113,#114),.USERDEFINED.,'x');#113=IFCDERIVEDUNITELEMENT(#93,2);"
    "#114=IFCDERIVEDUNITELEMENT(#107,-3);#115=IFCDERIVEDUNIT((#116,#117,#118),.THERMALTRANSMITTANCEUNIT.,$);"
    "#116=IFCDERIVEDUNITELEMENT(#119,1);#117=IFCDERIVEDUNITELEMENT(#120,-3);#118=IFCDERIVEDUNITELEMENT(#103,-1);"
    "#119=IFCSIUNIT(*,.MASSUNIT.,.KILO.,.GRAM.);#120=IFCSIUNIT(*,.TIMEUNIT.,$,.SECOND.);";

TEST_F(ModelDetailsTest, readsTheUnits) {
    const ModelDetails details = read(units);
    const auto text = [](const ModelUnit* unit) {
        if (unit == nullptr) {
            return std::string("none");
        }
        return unit->symbol + (unit->isConvertible ? ' ' + std::to_string(unit->toSi(100)) : "");
    };
    const std::pair<const char*, const char*> ofTypes[] = {
        {"IfcLengthMeasure", "mm 0.100000"},
        {"IfcPositiveLengthMeasure", "mm 0.100000"},
        {"IfcAreaMeasure", "cm² 0.010000"},
        {"IfcThermodynamicTemperatureMeasure", "°C 373.150000"},
        {"IfcMonetaryMeasure", "EUR"},
        {"IfcThermalTransmittanceMeasure", "kW/(K·mm²) 100000000000.000000"},
        {"IfcPlaneAngleMeasure", "° 50.000000"},
        {"IfcVolumeMeasure", "none"},
        {"IfcLabel", "none"},
        {"IfcThermalConductivityMeasure", "none"},
    };
    for (const auto& [type, expected] : ofTypes) {
        EXPECT_EQ(text(details.getUnits().ofType(type)), expected) << type;
    }
    const std::pair<std::uint64_t, const char*> ofInstances[] = {
        {105, "°F 310.927778"},  {107, "box"},
        {108, "ft 30.480000"},   {110, "loop"},
        {112, "kW·(cm²)²/box³"}, {115, "W/(m²·K) 100.000000"},
        {119, "kg 100.000000"},  {91, "none"},
        {999, "none"},
    };
    for (const auto& [id, expected] : ofInstances) {
        EXPECT_EQ(text(details.getUnits().ofInstance(id)), expected) << id;
    }
}

TEST_F(ModelDetailsTest, readsTheValuesOfAllKindsOfProperties) {
    const std::pair<std::string, std::string> properties[] = {
        {"#3=IFCPROPERTYSINGLEVALUE('A',$,IFCLENGTHMEASURE(2.5),$);", "A=2.5 mm;"},
        {"#3=IFCPROPERTYSINGLEVALUE('A',$,IFCLENGTHMEASURE(2.5),#108);", "A=2.5 ft;"},
        {"#3=IFCPROPERTYSINGLEVALUE('A',$,$,$);", "A=;"},
        {"#3=IFCPROPERTYENUMERATEDVALUE('A',$,(IFCLABEL('x'),IFCLABEL('y')),$);", "A=x;y;"},
        {"#3=IFCPROPERTYENUMERATEDVALUE('A',$,(IFCREAL(1.)),#4);#4=IFCPROPERTYENUMERATION('E',(),#107);", "A=1 box;"},
        {"#3=IFCPROPERTYENUMERATEDVALUE('A',$,$,$);", "A=;"},
        {"#3=IFCPROPERTYBOUNDEDVALUE('A',$,IFCREAL(3.),IFCREAL(1.),#107,IFCREAL(2.));", "A=3;1;2 box;"},
        {"#3=IFCPROPERTYBOUNDEDVALUE('A',$,$,IFCLENGTHMEASURE(1.),$);", "A=;1 mm;"},
        {"#3=IFCPROPERTYLISTVALUE('A',$,(IFCINTEGER(1),IFCINTEGER(2)),$);", "A=1;2;"},
        {"#3=IFCPROPERTYTABLEVALUE('A',$,(IFCREAL(1.),IFCREAL(2.)),(IFCLENGTHMEASURE(3.)),$,#107,$,$);",
         "A=1=3;2= box=mm;"},
        {"#3=IFCPROPERTYREFERENCEVALUE('A',$,$,#4);#4=IFCMATERIAL('Brick',$,$);", "A=Brick;"},
        {"#3=IFCPROPERTYREFERENCEVALUE('A',$,$,#4);#4=IFCDIRECTION((1.));", "A=#4;"},
        {"#3=IFCPROPERTYREFERENCEVALUE('A',$,$,$);", "A=;"},
        {"#3=IFCCOMPLEXPROPERTY('C',$,'u',(#4,#5,#3));#4=IFCPROPERTYSINGLEVALUE('A',$,IFCLABEL('a'),$);"
         "#5=IFCCOMPLEXPROPERTY('D',$,'u',(#4));",
         "C.A=a;C.D.A=a;"},
        {"#3=IFCQUANTITYCOUNT('A',$,$,5.,$);", "A=5;"},
        {"#3=IFCPHYSICALCOMPLEXQUANTITY('C',$,(#4),'d',$,$);#4=IFCQUANTITYAREA('A',$,$,2.);", "C.A=2 cm²;"},
        {"#3=IFCDIRECTION((1.));", ""},
    };
    for (const auto& [statements, expected] : properties) {
        const std::string set = "#1=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#7),#2);#2=IFCPROPERTYSET('s',$,'S',$,(#3));";
        EXPECT_EQ(sets(read(units + set + statements + "#7=IFCWALL('w',$,'W');")), "S: " + expected) << statements;
    }
}

TEST_F(ModelDetailsTest, findsTheSetsOfAnObjectAndOfItsType) {
    const std::string data =
        "#7=IFCWALL('w',$,'W');#8=IFCWALLTYPE('t',$,'T',$,$,(#21,#22),$,$,$,.SOLIDWALL.);"
        "#30=IFCRELDEFINESBYTYPE('r',$,$,$,(#7),#8);#31=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#6,#7),#20);"
        "#32=ifcRelDefinesByProperties('r',$,$,$,(#7),IFCPROPERTYSETDEFINITIONSET((#20,#23)));"
        "#33=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#8),#24);"
        "#20=IFCPROPERTYSET('s',$,'S',$,(#1,#2));#21=IFCPROPERTYSET('s',$,'S',$,(#3,#4));"
        "#22=IFCPROPERTYSET('s',$,'Q',$,(#4));#23=IFCELEMENTQUANTITY('s',$,'Q',$,'m',(#5));"
        "#24=IFCPROPERTYSET('s',$,'U',$,$);#1=IFCPROPERTYSINGLEVALUE('A',$,IFCLABEL('own'),$);"
        "#2=IFCPROPERTYSINGLEVALUE('B',$,$,$);#3=IFCPROPERTYSINGLEVALUE('A',$,IFCLABEL('of type'),$);"
        "#4=IFCPROPERTYSINGLEVALUE('C',$,IFCLABEL('of type'),$);#5=IFCQUANTITYLENGTH('L',$,$,3.,$);";
    const ModelDetails details = read(data);
    EXPECT_EQ(sets(details), "S: A=own;B=;C=of type<type;Q#: L=3;Q: C=of type<type;U: ");
    EXPECT_EQ(sets(details, "T"), "S: A=of type;C=of type;Q: C=of type;U: ");
    EXPECT_EQ(details.typeOf(named(details, "W"))->name, "T");
    EXPECT_EQ(details.typeOf(named(details, "T")), nullptr);
}

TEST_F(ModelDetailsTest, takesAttributesForPropertiesWhereAClassHasThose) {
    const std::pair<std::string, std::string> sets[] = {
        {"#2=IFCDOORLININGPROPERTIES('s',$,'W',$,1.5,$,$,$,$,0.,$,$,$,$,#9,$,-2.);",
         "IfcDoorLiningProperties: LiningDepth=1.5 mm;TransomOffset=0 mm;LiningToPanelOffsetY=-2 mm;"},
        {"#2=IFCDOORLININGPROPERTIES('s',$,'W',$,$,$,$,$,$,$,$,$,$,$,#9);", "IfcDoorLiningProperties: "},
        {"#2=IFCWINDOWPANELPROPERTIES('s',$,$,$,.TOPHUNG.,.LEFT.,$,3.,$);",
         "IfcWindowPanelProperties: OperationType=TOPHUNG;PanelPosition=LEFT;FrameThickness=3 mm;"},
        {"#2=IFCSERVICELIFEFACTOR('s',$,$,$,.NOTDEFINED.,$,IFCLENGTHMEASURE(2.),$);",
         "IfcServiceLifeFactor: PredefinedType=NOTDEFINED;MostUsedValue=2 mm;"},
    };
    for (const auto& [statement, expected] : sets) {
        const std::string data = "#1=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#7),#2);#7=IFCWALL('w',$,'W');";
        EXPECT_EQ(ModelDetailsTest::sets(read(units + data + statement)), expected) << statement;
    }
    // The panels of a door are told by sets of one name.
    EXPECT_EQ(ModelDetailsTest::sets(read("#7=IFCDOOR('w',$,'W');#8=IFCDOORTYPE('t',$,'T',$,$,(#1,#2));"
                                          "#9=IFCRELDEFINESBYTYPE('r',$,$,$,(#7),#8);#4=IFCDOORPANELPROPERTIES('s',$,"
                                          "$,$,$,.FOLDING.,$,$,$);#3=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#7),#4);"
                                          "#1=IFCDOORPANELPROPERTIES('s',$,$,$,$,.SWINGING.,$,.LEFT.,$);"
                                          "#2=IFCDOORPANELPROPERTIES('s',$,$,$,$,.SWINGING.,$,.RIGHT.,$);")),
              "IfcDoorPanelProperties: PanelOperation=FOLDING;PanelPosition=LEFT<type;PanelPosition=RIGHT<type;");
}

TEST_F(ModelDetailsTest, findsTheSetsOfWhatDeclaresAnObject) {
    const std::string data =
        "#1=IFCWALL('w',$,'W');#2=IFCWALL('d',$,'D');#3=IFCRELDEFINESBYOBJECT('r',$,$,$,(#1),#2);"
        "#4=IFCWALLTYPE('t',$,'T',$,$,(#20));#5=IFCRELDEFINESBYTYPE('r',$,$,$,(#1),#4);"
        "#6=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#2),#21);#7=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#1),#22);"
        "#20=IFCPROPERTYSET('s',$,'S',$,(#30,#31,#32));#21=IFCPROPERTYSET('s',$,'S',$,(#31,#33));"
        "#22=IFCPROPERTYSET('s',$,'S',$,(#33));#30=IFCPROPERTYSINGLEVALUE('A',$,IFCLABEL('a'),$);"
        "#31=IFCPROPERTYSINGLEVALUE('B',$,IFCLABEL('b'),$);#32=IFCPROPERTYSINGLEVALUE('C',$,IFCLABEL('c'),$);"
        "#33=IFCPROPERTYSINGLEVALUE('C',$,IFCLABEL('own'),$);";
    EXPECT_EQ(sets(read(data)), "S: C=own;B=b<declaration;A=a<type;");
}

TEST_F(ModelDetailsTest, findsTheSetsOfMaterials) {
    const std::string data =
        "#1=IFCMATERIAL('Brick',$,$);#2=IFCMATERIAL('Wool',$,$);#3=IFCMATERIALLAYER(#1,1.,$,$,$,$,$);"
        "#4=IFCMATERIALLAYER(#2,1.,$,$,$,$,$);#5=IFCMATERIALLAYERSET((#3,#4,#3),'Outer',$);"
        "#6=IFCMATERIALLAYERSETUSAGE(#5,.AXIS2.,.POSITIVE.,0.,$);#7=IFCWALL('w',$,'W');#8=IFCWALL('x',$,'X');"
        "#9=IFCWALLTYPE('t',$,'T',$,$,$);#11=IFCRELDEFINESBYTYPE('r',$,$,$,(#8,#7),#9);"
        "#12=IFCRELASSOCIATESMATERIAL('r',$,$,$,(#7),#6);#13=IFCRELASSOCIATESMATERIAL('r',$,$,$,(#9),#2);"
        "#14=IFCRELASSOCIATESMATERIAL('r',$,$,$,(#10),#14);#10=IFCWALL('y',$,'Y');"
        "#15=IFCMATERIALPROPERTIES('M',$,(#20),#2);#16=IFCEXTENDEDMATERIALPROPERTIES(#1,(#20),$,'N');"
        "#17=IFCGENERALMATERIALPROPERTIES(#1,$,0.5,$);#18=IFCMATERIALPROPERTIES('O',$,(#20),#5);"
        "#20=IFCPROPERTYSINGLEVALUE('A',$,IFCLENGTHMEASURE(2.),$);";
    const ModelDetails details = read(units + data);
    const std::pair<const char*, const char*> objects[] = {
        {"W", "O: A=2 mm<material Outer;N: A=2 mm<material Brick;"
              "IfcGeneralMaterialProperties: Porosity=0.5<material Brick;M: A=2 mm<material Wool;"},
        {"X", "M: A=2 mm<material Wool;"},
        {"Y", ""},
    };
    for (const auto& [name, expected] : objects) {
        EXPECT_EQ(text(details.materialSetsOf(named(details, name))), expected) << name;
        EXPECT_EQ(sets(details, name), "") << name;
    }
}

TEST_F(ModelDetailsTest, findsThePlaceOfAnObject) {
    const ModelDetails details = read(
        "#9=IFCWALL('',$,'Part');#1=IFCPROJECT('',$,'P');#2=IFCSITE('',$,'Site');#3=IFCBUILDING('',$,'House');"
        "#4=IFCBUILDINGSTOREY('',$,'Ground');#5=IFCSPACE('',$,'Room');#6=IFCCHAIR('',$,'x');#7=IFCDOOR('',$,'Door');"
        "#8=IFCELEMENTASSEMBLY('',$,'Whole');#10=IFCWALL('',$,'Wall');#11=IFCOPENINGELEMENT('',$,'Opening');"
        "#12=IFCFURNITURE('',$,'Chair');#13=IFCVALVE('',$,'Nested');#14=IFCWALL('',$,'Nowhere');"
        "#15=IFCWALL('',$,'Circle');#16=IFCROAD('',$,'Road');#17=IFCKERB('',$,'Kerb');"
        "#30=IFCRELAGGREGATES('',$,$,$,#1,(#2));#31=IFCRELAGGREGATES('',$,$,$,#2,(#3,#16));"
        "#32=IFCRELAGGREGATES('',$,$,$,#3,(#4));#33=IFCRELAGGREGATES('',$,$,$,#4,(#5));"
        "#34=IFCRELAGGREGATES('',$,$,$,#8,(#9,#12));#35=IFCRELCONTAINEDINSPATIALSTRUCTURE('',$,$,$,(#8,#10),#4);"
        "#36=IFCRELVOIDSELEMENT('',$,$,$,#10,#11);#37=IFCRELFILLSELEMENT('',$,$,$,#11,#7);"
        "#38=IFCRELCONTAINEDINSPATIALSTRUCTURE('',$,$,$,(#12),#5);#39=IFCRELNESTS('',$,$,$,#12,(#13));"
        "#40=IFCRELAGGREGATES('',$,$,$,#15,(#15));#41=IFCRELCONTAINEDINSPATIALSTRUCTURE('',$,$,$,(#17),#16);");
    const std::pair<const char*, const char*> places[] = {
        {"Part", "Site House Ground | Ground"},
        {"Wall", "Site House Ground | Ground"},
        {"Door", "Site House Ground | Ground"},
        {"Chair", "Site House Ground Room | Ground"},
        {"Nested", "Site House Ground Room | Ground"},
        {"Room", "Site House Ground | Ground"},
        {"Site", "| "},
        {"Nowhere", "| "},
        {"Circle", "| "},
        {"Kerb", "Site Road | "},
    };
    for (const auto& [name, expected] : places) {
        EXPECT_EQ(place(details, name), expected) << name;
    }
}

TEST_F(ModelDetailsTest, tellsWhatIsMalformed) {
    const std::string wall = "#7=IFCWALL('w',$,'W');#1=IFCRELDEFINESBYPROPERTIES('r',$,$,$,(#7),#2);";
    const char* const statements[] = {
        "#2=IFCPROPERTYSET('s',$,'S',$,(#3)));#3=IFCPROPERTYSINGLEVALUE('A',$,IFCREAL(,$);",
        "#2=IFCPROPERTYSET('s',$,'S' $);", "#9=IFCRELAGGREGATES('',$,$,$ #1);", "#9=IFCSIUNIT(*,.LENGTHUNIT);",
        "#2=IFCPROPERTYSET('s',$,'S'"};
    for (const char* const statement : statements) {
        EXPECT_THROW(sets(read(wall + statement)), ModelError) << statement;
    }
}

} // namespace
} // namespace annotate

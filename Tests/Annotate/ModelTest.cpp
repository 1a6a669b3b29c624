#include "Annotate/Model.h"

#include "Annotate/Overlay.h"
#include "Annotate/StepFile.h"
#include "FoundationClasses/IfcClass.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace annotate {

namespace {

const std::string wallId = "0aaaaaaaaaaaaaaaaaaaaa";
const std::string wallStatement = "#7=IFCWALL('" + wallId + "',$,'A',$,$,$,$,$,$);";

class ModelTest : public ::testing::Test {
protected:
    Model read(const std::string& content) const {
        orv::tests::setContent(file, content);
        return Model::read(file);
    }

    /// The objects in the form of "7 IfcWall 0aaaaaaaaaaaaaaaaaaaaa A;", or why there are none.
    std::string shown(const std::string& content) const {
        try {
            const Model model = read(content);
            std::string text;
            for (const ModelObject& object : model.getObjects()) {
                text += std::to_string(object.id).append(" ").append(object.ifcClass->name);
                text += ' ' + object.globalId + ' ' + object.name + ';';
            }
            return text;
        } catch (const ModelError& error) {
            return error.what();
        }
    }

    orv::tests::TemporaryDirectory directory;
    const std::filesystem::path file = directory / "a.ifc";
};

TEST_F(ModelTest, listsTheObjectDefinitionsOfTheData) {
    const std::string found = "7 IfcWall " + wallId + " A;";
    const std::string deep = std::string(100'000, '(') + std::string(100'000, ')');
    const std::pair<std::string, std::string> statements[] = {
        {"", ""},
        {wallStatement, found},
        {"#7 = ifcWall /* ;' */ ( '" + wallId + "' , #1 ,\r\n'A' , * , $ ) ;", found},
        {"#1=IFCDOOR('x',$,$);#2=IFCPROJECT($,$,'P',(#3,#4));", "1 IfcDoor x ;2 IfcProject  P;"},
        {"#1=IFCWALL('" + wallId.substr(0, 9) + "\r\n" + wallId.substr(9) + "',$,'A\n');",
         "1 IfcWall " + wallId + " A;"},
        {"#18446744073709551615=IFCWALL('',$,'');", "18446744073709551615 IfcWall  ;"},
        {"#99999999999999999999=IFCPOINT(1.);" + wallStatement, found},
        {"#1=IFCRELAGGREGATES('" + wallId + "',$,'R',$,#1,(#7));#2=NOSUCHCLASS('x',$,'y');", ""},
        {"#1=IFCLABEL('a;''#2=IFCWALL(''/*');" + wallStatement + "#3=IFCLABEL(');*/');", found},
        {"/*" + wallStatement + "*/ /***/ #1=IFCDIRECTION((1.,0.)/* ; ' */);" + wallStatement, found},
        {"#1=(IFCWALL('x',$,'y')IFCB(1));" + wallStatement + "#2=!OWN('x');", found},
        {wallStatement + "\nENDSEC;\nDATA('b',('IFC4'));\n#8=IFCSITE('x',$,'B');", found + "8 IfcSite x B;"},
        {"#7=IFCWALL('" + wallId + "',IFCX((1,-2.5E-3),()),'A',\"0F\",.T.,((#1),$),'\n');", found},
        {"#7=IFCWALL('" + wallId + "'," + deep + ",'A'," + deep + ");#1=IFCPOINT(" + deep + ");", found},
    };
    for (const auto& [statement, expected] : statements) {
        EXPECT_EQ(shown(header + statement + footer), expected) << statement.substr(0, 200);
    }
    EXPECT_EQ(shown("\xef\xbb\xbf" + header + wallStatement + footer), found);
}

TEST_F(ModelTest, readsStatementsWhereverABlockOfTheFileEnds) {
    const std::string statement = "\r\n#7=IFCWALL/*;*/('" + wallId + "',$,'A''B',(.T.,\"0F\",IFCX(-1.5)),';');";
    const std::string point = "#1=IFCPOINT('a''b',/*;*/1.);";
    for (std::size_t left = 0; left < statement.size() + point.size(); ++left) {
        const std::string filled = header + std::string(128UL * 1024 - header.size() - left, ' ') + statement;
        EXPECT_EQ(shown(filled + point + footer), "7 IfcWall " + wallId + " A'B;") << left;
    }
}

TEST_F(ModelTest, findsTheFirstObjectOfAValidGlobalId) {
    const std::string uuid = "7b7032cc-b822-417b-9aea-6429f95d6512";
    const Model model =
        read(header + "#1=IFCWALL('" + uuid + "',$,$);" + wallStatement + "#8=IFCDOOR('" + wallId + "',$,$);" + footer);
    orv::Guid wanted;
    ASSERT_TRUE(wanted.boSet(wallId));
    EXPECT_EQ(model.find(wanted), &model.getObjects().at(1));
    const Overlay overlay(model);
    orv::domain::shared::enhancementsforreferencemodel::PsetData values(false);
    values.setValue(wanted, "Pset_WallCommon", "FireRating", orv::object::PropertyValue("F90"));
    EXPECT_STREQ(values.getDb()->data().findByGuid(wanted)->className(), "IfcWall");
    ASSERT_TRUE(wanted.boSet(uuid));
    EXPECT_EQ(model.find(wanted), nullptr);
}

TEST_F(ModelTest, tellsWhatIsWrongWithAFile) {
    const std::string start = header.substr(0, header.find("FILE_SCHEMA"));
    const std::pair<std::string, std::string> files[] = {
        {"", "isn't an IFC model"},
        {std::string("\x7f\x45LF\0\x01", 6), "isn't an IFC model"},
        {start + "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));ENDSEC;DATA;" + footer, "its schema is 'AUTOMOTIVE_DESIGN'"},
        {start + "ENDSEC;DATA;" + footer, "its schema is ''"},
        {header + wallStatement, "is cut off"},
        {header + "#1=IFCPOINT((1.", "is cut off: it ends inside a statement that begins in line 7"},
        {header + "\r\n\r#1=IFCWALL('abc", "is cut off: it ends inside a string that begins in line 9"},
        {header + "/* " + wallStatement + footer, "is cut off: it ends inside a comment that begins in line 7"},
        {header + "\n#1=IFCWALL('x' $,'y');" + footer, "has a syntax error in line 8: ',' is missing"},
        {header + "#1=IFCWALL('x',$,'y',);" + footer, "has a syntax error in line 7: a parameter is missing"},
        {header + "#1=IFCWALL('x',$,'y',(1);" + footer, "has a syntax error in line 7: ')' is missing"},
        {header + "#1=IFCWALL('x',$,'y')\n" + wallStatement + footer, "has a syntax error in line 8: ';' is missing"},
        {header + "#1=IFCPOINT((1.))\n" + wallStatement + footer, "has a syntax error in line 8: ';' is missing"},
        {header + "#99999999999999999999=IFCWALL('x',$,$);" + footer, "has a syntax error in line 7"},
        {header + wallStatement + "nothing;" + footer, "has a syntax error in line 7: ENDSEC is missing"},
    };
    for (const auto& [content, part] : files) {
        const std::string message = shown(content);
        EXPECT_NE(message.find(part), std::string::npos) << message;
        EXPECT_NE(message.find("a.ifc"), std::string::npos) << message;
    }
}

TEST_F(ModelTest, takesAFileThatIsCutOffAnywhereForBroken) {
    const std::string whole = orv::tests::contentOf(HOUSE);
    const std::size_t end = whole.rfind(';');
    for (std::size_t size = 0; size < end; size += 61) {
        EXPECT_THROW(read(whole.substr(0, size)), ModelError) << size;
    }
    EXPECT_EQ(read(whole.substr(0, end + 1)).getObjects().size(), Model::read(HOUSE).getObjects().size());
}

} // namespace
} // namespace annotate

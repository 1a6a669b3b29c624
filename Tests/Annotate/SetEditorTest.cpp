#include "Annotate/SetEditor.h"

#include "Annotate/Arguments.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/ModelFile.h"
#include "Annotate/StepFile.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <set>

namespace annotate {
namespace {

/// Of the properties, #1 is in two sets, #2 in one, #3 in one and in a complex property, and #7 in one twice.
const std::string data = "#1=IFCPROPERTYSINGLEVALUE('A',$,IFCLABEL('a'),$);\n"
                         "#2=IFCPROPERTYSINGLEVALUE('B',$,IFCLABEL('b'),$);\n"
                         "#3=IFCPROPERTYSINGLEVALUE('C',$,IFCLABEL('c'),$);\n"
                         "#4=IFCCOMPLEXPROPERTY('D',$,'use',(#3));\n"
                         "#5=IFCOWNERHISTORY($,$,$,$,$,$,$,0);#6=ifcownerhistory($,$,$,$,$,$,$,0);\n"
                         "#7=IfcPropertySingleValue('F',$,$,$);\n"
                         "#9=IFCPROPERTYSET('0aaaaaaaaaaaaaaaaaaaaa',#5,'S',$,(#1,#2,#3));\n"
                         "#10=IFCPROPERTYSET('1aaaaaaaaaaaaaaaaaaaaa',#5,'T',$,(#1));\n"
                         "#11=IFCPROPERTYSET('7aaaaaaaaaaaaaaaaaaaaa',#5,'U',$,(#7,#1,#7));\n"
                         "#20=IFCRELDEFINESBYPROPERTIES('2aaaaaaaaaaaaaaaaaaaaa',#5,$,$,(#30),#9);\n"
                         "#21=IFCRELDEFINESBYPROPERTIES('3aaaaaaaaaaaaaaaaaaaaa',#5,$,$,(#30),#10);\n"
                         "#22=IFCRELDEFINESBYPROPERTIES('4aaaaaaaaaaaaaaaaaaaaa',#5,$,$,(#31),\n#9);\n"
                         "#31=IFCDOOR('6aaaaaaaaaaaaaaaaaaaaa',#5,'; ''#99=',$,$,$,$,$);\n"
                         "#30=IFCWALL('5aaaaaaaaaaaaaaaaaaaaa',#5,'W',$,$,$,$,$);";

class SetEditorTest : public ::testing::Test {
protected:
    static std::filesystem::path written(const std::filesystem::path& path) {
        orv::tests::setContent(path, header + data + footer);
        return path;
    }

    static SetEditor editorOf(const ModelDetails& model, StatementFinder& statements) {
        readModelFile(model.getPath(), statements);
        return {model.getStatements(), statements};
    }

    static SetMember single(const std::string& parameters, std::uint64_t replaced) {
        return {{"IFCPROPERTYSINGLEVALUE", parameters}, replaced};
    }

    /// What the editor replaces, and by what.
    std::string edited() {
        std::string text = header + data + footer;
        std::string changes;
        for (const auto& [position, replacement] : editor.takeReplacements()) {
            changes.append(text.substr(position, replacement.end - position)).append(" > ");
            changes.append(replacement.text).append("\n");
        }
        return changes;
    }

    orv::tests::TemporaryDirectory directory;
    const std::filesystem::path file = written(directory / "a.ifc");
    const ModelDetails details = ModelDetails::read(file);
    StatementFinder finder{{1, 2, 3, 7, 9, 10, 11, 31}, {9}};
    SetEditor editor = editorOf(details, finder);
};

TEST_F(SetEditorTest, findsTheStatementsWanted) {
    EXPECT_EQ(finder.getSchema(), "IFC4");
    EXPECT_EQ(finder.getHighestId(), 31U);
    EXPECT_EQ(finder.getOwnerHistory(), 5U);
    EXPECT_EQ(finder.getDataEnd(), (header + data).size() + 1);
    EXPECT_EQ(finder.find(30), nullptr);
    EXPECT_EQ(finder.find(20), nullptr);
    const FoundStatement* const door = finder.find(31);
    ASSERT_NE(door, nullptr);
    EXPECT_EQ((header + data).substr(door->position, door->end - door->position),
              "#31=IFCDOOR('6aaaaaaaaaaaaaaaaaaaaa',#5,'; ''#99=',$,$,$,$,$);");
    EXPECT_EQ(finder.find(7)->keyword, "IfcPropertySingleValue");
    ASSERT_EQ(finder.getAssignments().size(), 2U);
    EXPECT_EQ(finder.getAssignments()[0].id, 20U);
    EXPECT_EQ(finder.getAssignments()[1].parts[5], "\n#9");
}

TEST_F(SetEditorTest, changesAPropertyWhereItStandsIfNothingElseHasIt) {
    editor.edit(9, {single("'A',$,IFCLABEL('new'),$", 1), single("'B',$,IFCLABEL('new'),$", 2),
                    single("'C',$,IFCLABEL('new'),$", 3)});
    EXPECT_EQ(
        edited(),
        "#2=IFCPROPERTYSINGLEVALUE('B',$,IFCLABEL('b'),$); > #2=IFCPROPERTYSINGLEVALUE('B',$,IFCLABEL('new'),$);\n"
        "#9=IFCPROPERTYSET('0aaaaaaaaaaaaaaaaaaaaa',#5,'S',$,(#1,#2,#3)); > "
        "#9=IFCPROPERTYSET('0aaaaaaaaaaaaaaaaaaaaa',#5,'S',$,(#32,#2,#33));\n"
        " > #32=IFCPROPERTYSINGLEVALUE('A',$,IFCLABEL('new'),$);\n"
        "#33=IFCPROPERTYSINGLEVALUE('C',$,IFCLABEL('new'),$);\n\n");
}

TEST_F(SetEditorTest, namesAPropertyOnceThatTheSetHadTwice) {
    editor.edit(11, {single("'F',$,IFCLABEL('new'),$", 7)});
    EXPECT_EQ(edited(), "#11=IFCPROPERTYSET('7aaaaaaaaaaaaaaaaaaaaa',#5,'U',$,(#7,#1,#7)); > "
                        "#11=IFCPROPERTYSET('7aaaaaaaaaaaaaaaaaaaaa',#5,'U',$,(#32,#1));\n"
                        " > #32=IFCPROPERTYSINGLEVALUE('F',$,IFCLABEL('new'),$);\n\n");
}

TEST_F(SetEditorTest, putsAPropertyOfAnotherClassOrNameBesideTheOthers) {
    editor.edit(9, {{{"IFCPROPERTYLISTVALUE", "'C',$,(IFCLABEL('c')),$"}, 3}, single("'E',$,IFCLABEL('e'),$", 0)});
    EXPECT_EQ(
        edited(),
        "#9=IFCPROPERTYSET('0aaaaaaaaaaaaaaaaaaaaa',#5,'S',$,(#1,#2,#3)); > "
        "#9=IFCPROPERTYSET('0aaaaaaaaaaaaaaaaaaaaa',#5,'S',$,(#1,#2,#32,#33));\n"
        " > "
        "#32=IFCPROPERTYLISTVALUE('C',$,(IFCLABEL('c')),$);\n#33=IFCPROPERTYSINGLEVALUE('E',$,IFCLABEL('e'),$);\n\n");
}

TEST_F(SetEditorTest, makesOneVariantForOneKey) {
    const std::vector<SetMember> members = {single("'A',$,IFCLABEL('new'),$", 1)};
    const std::uint64_t variant = editor.variantOf(9, "key", members, "5aaaaaaaaaaaaaaaaaaaaa");
    EXPECT_EQ(variant, 33U);
    EXPECT_EQ(editor.variantOf(9, "key", members, "6aaaaaaaaaaaaaaaaaaaaa"), variant);
    EXPECT_EQ(editor.variantOf(9, "other", members, "6aaaaaaaaaaaaaaaaaaaaa"), 34U);
    EXPECT_EQ(editor.variantOf(10, "key", members, "6aaaaaaaaaaaaaaaaaaaaa"), 35U);
    const std::string text = edited();
    std::set<std::string> ids;
    for (std::size_t place = text.find("SET('"); place != std::string::npos; place = text.find("SET('", place + 1)) {
        ids.insert(text.substr(place + 5, 22));
    }
    EXPECT_EQ(ids.size(), 3U) << text;
    EXPECT_NE(text.find(",#5,'S',$,(#32,#2,#3));"), std::string::npos) << text;
    EXPECT_NE(text.find(",#5,'T',$,(#32));"), std::string::npos) << text;
}

TEST(NewStatementsTest, numbersThemAndKnowsEqualOnesAgain) {
    NewStatements statements(41);
    EXPECT_EQ(statements.add("IFCWALL", "$"), 42U);
    EXPECT_EQ(statements.addOnce("IFCWALL", "$"), 43U);
    EXPECT_EQ(statements.addOnce("IFCWALL", "$"), 43U);
    EXPECT_EQ(statements.addOnce("IFCDOOR", "$"), 44U);
    EXPECT_EQ(statements.addOnce("IFCDOOR", "*"), 45U);
    EXPECT_EQ(statements.getText(), "#42=IFCWALL($);\n#43=IFCWALL($);\n#44=IFCDOOR($);\n#45=IFCDOOR(*);\n");
}

TEST(NewStatementsTest, refusesAModelThatLeavesNoNumbers) {
    EXPECT_EQ(NewStatements(18446742974197923839U).add("IFCWALL", "$"), 18446742974197923840U);
    EXPECT_THROW(NewStatements(18446742974197923840U), RequestError);
    EXPECT_THROW(NewStatements(18446744073709551615U), RequestError);
}

TEST(NewStatementsTest, haveAGlobalIdOfVersionEightFromTheContent) {
    for (const std::string_view content : {"", "a", "b", "set\n'0aaaaaaaaaaaaaaaaaaaaa'"}) {
        const std::string literal = globalIdOf(content);
        EXPECT_EQ(literal, globalIdOf(content));
        ASSERT_TRUE(literal.size() == 24 && literal.front() == '\'' && literal.back() == '\'') << literal;
        orv::Guid id;
        id.boSet(literal.substr(1, 22));
        EXPECT_EQ(id.data3 >> 12U, 8U) << content;
        EXPECT_EQ(id.data4[0] >> 6U, 2U) << content;
    }
    EXPECT_NE(globalIdOf("a"), globalIdOf("b"));
}

} // namespace
} // namespace annotate

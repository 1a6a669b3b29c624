#include "Annotate/HouseTest.h"
#include "Annotate/ZipArchive.h"

#include <regex>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;

/// The names of files and what they hold.
using Files = std::vector<std::pair<std::string, std::string>>;

class TopicsImportTest : public HouseTest {
protected:
    std::string pack(const Files& files, const std::string& name = "in.bcf") const {
        NewZipArchive made;
        for (const auto& [path, content] : files) {
            made.add(path, content);
        }
        setContent(directory / name, made.finish());
        return directory / name;
    }

    /// What is printed of the import, and the notes then: object, state, priority, author, text.
    std::string imported(const std::string& archive) const {
        const Outcome outcome = runOn(store, {"import", archive});
        const std::regex folder((directory / "").string());
        const std::string told = std::regex_replace(outcome.output + outcome.error, folder, "");
        return told + runOn(store, {"notes"}).output;
    }
};

/// A markup of version 2.1 around the topic's elements.
std::string markup(const std::string& id, const std::string& elements, const std::string& behind = "",
                   const std::string& status = "Open") {
    return "<Markup><Topic Guid='" + id + "' TopicType='Clash' TopicStatus='" + status + "'>" + elements + "</Topic>" +
           behind + "</Markup>";
}

constexpr const char* topicId = "11111111-1111-4111-8111-111111111111";
constexpr const char* otherId = "22222222-2222-4222-8222-222222222222";

std::string viewpointOf(const std::string& globalIds) {
    return "<VisualizationInfo Guid='" + std::string(otherId) + "'><Components>" + globalIds +
           "</Components></VisualizationInfo>";
}

TEST_F(TopicsImportTest, areReadAsOtherProgramsWriteThem) {
    struct Case {
        const char* name;
        Files files;
        std::string told;
    };
    const std::string selection = "<Selection><Component IfcGuid='" + std::string(doorOfHouse) +
                                  "'/><Component IfcGuid='" + wallOfHouse + "'/></Selection>";
    const Case cases[] = {
        {"2.0, with its own way of selecting, in a folder within a folder",
         {{"export\\" + std::string(topicId) + "\\markup.bcf",
           markup(topicId,
                  "<Title>Gap</Title><Priority>High</Priority><CreationDate>2014-10-16T13:10:56</CreationDate>"
                  "<CreationAuthor>eva@example.org</CreationAuthor><ModifiedDate>Friday</ModifiedDate>"
                  "<Description>Between both</Description>",
                  "<Viewpoints Guid='" + std::string(otherId) +
                      "'><Viewpoint>v.bcfv</Viewpoint><Snapshot>s.png</Snapshot></Viewpoints>",
                  "closed")},
          {"export\\" + std::string(topicId) + "\\v.bcfv",
           viewpointOf("<Component IfcGuid='" + std::string(wallOfHouse) +
                       "' Selected='false'/><Component Selected='true' "
                       "IfcGuid='" +
                       doorOfHouse + "'/><Component IfcGuid='" + doorOfHouse + "'/>")}},
         "1 note added and 0 changed in notes.xml.\n"
         "annotate: Left out: priorities that aren't whole numbers (1).\n"
         "annotate: Left out: snapshots (1).\n"
         "annotate: Left out: times that aren't understood (1).\n"
         "1\t2b_TX4KeSUsSwjWBToxytC\tIfcDoor\tFront door\t0\tresolved\teva@example.org\t"
         "2014-10-16T13:10:56Z\t\t\tGap\\n\\nBetween both\n"},
        {"2.1, with comments, finer times and a zone",
         {{"bcf.version", "<Version VersionId='2.1'/>"},
          {"t/markup.bcf",
           markup(topicId,
                  "<Title>Gap</Title><Labels>MEP</Labels><CreationDate>2020-01-31T23:30:00.1234567-01:00</CreationDate>"
                  "<CreationAuthor>Eva</CreationAuthor><DueDate>2020-02-01T00:00:00Z</DueDate>",
                  "<Comment Guid='" + std::string(otherId) +
                      "'><Date>2020-02-02T00:00:00Z</Date><Author>Max</Author><Comment>Seen.</Comment></Comment>"
                      "<Comment Guid='33333333-3333-4333-8333-333333333333'><Author>Max</Author><Comment/></Comment>"
                      "<Viewpoints Guid='v'><Viewpoint>viewpoint.bcfv</Viewpoint></Viewpoints>",
                  "Resolved")},
          {"t/viewpoint.bcfv",
           viewpointOf(selection + "<Visibility><Exceptions><Component IfcGuid='x'/></Exceptions></Visibility>")}},
         "2 notes added and 0 changed in notes.xml.\n"
         "annotate: 2 topics are on several objects; each note is on the first that the model has.\n"
         "annotate: Left out: colours and hidden objects of viewpoints (1).\n"
         "annotate: Left out: due dates (1).\n"
         "annotate: Left out: labels (1).\n"
         "annotate: Left out: topics and comments without a text (1).\n"
         "1\t2b_TX4KeSUsSwjWBToxytC\tIfcDoor\tFront door\t0\tresolved\tEva\t2020-02-01T00:30:00Z\t\t\tGap\n"
         "2\t2b_TX4KeSUsSwjWBToxytC\tIfcDoor\tFront door\t0\tresolved\tMax\t2020-02-02T00:00:00Z\t\t\tSeen.\n"},
        {"without a text",
         {{"t/markup.bcf", markup(topicId, "<Title/>")}},
         "Nothing was stored.\nannotate: Left out: topics and comments without a text (1).\n"},
        {"3.0, one on no object of the model, one twice, with a namespace",
         {{"bcf.version", "<Version VersionId='3.0'/>"},
          {"a/markup.bcf",
           "<b:Markup xmlns:b='urn:b'><b:Topic Guid='" + std::string(topicId) +
               "'><b:Title>Elsewhere</b:Title><b:Labels><b:Label>A</b:Label><b:Label>B</b:Label></b:Labels>"
               "<b:Viewpoints><b:ViewPoint Guid='v'><b:Viewpoint>v.bcfv</b:Viewpoint></b:ViewPoint></b:Viewpoints>"
               "</b:Topic></b:Markup>"},
          {"a/v.bcfv", viewpointOf("<Selection><Component IfcGuid='0000000000000000000000'/></Selection>")},
          {"b/markup.bcf", markup(otherId, "<Title>Here</Title><Description>Here it is\n\nObject: IfcDoor D, "
                                           "GlobalId 2b_TX4KeSUsSwjWBToxytC</Description>")},
          {"c/markup.bcf", markup(otherId, "<Title>Again</Title>")}},
         "1 note added and 0 changed in notes.xml.\n"
         "annotate: Not placed, as the model has none of its objects: Elsewhere\n"
         "annotate: Left out: labels (2).\n"
         "annotate: Left out: topics and comments that come twice (1).\n"
         "1\t2b_TX4KeSUsSwjWBToxytC\tIfcDoor\tFront door\t0\topen\t\t\t\t\tHere it is\n"},
    };
    for (const Case& each : cases) {
        std::filesystem::remove(store);
        EXPECT_EQ(imported(pack(each.files)), each.told) << each.name;
    }
}

TEST_F(TopicsImportTest, changeTheNotesThatTheyAreIfTheyAreNewer) {
    const auto topic = [this](const std::string& text, const std::string& modified, const char* status) {
        return pack(
            {{"t/markup.bcf", markup(topicId,
                                     "<Title>" + text +
                                         "</Title><CreationDate>2020-01-01T00:00:00Z</CreationDate>"
                                         "<CreationAuthor>Eva</CreationAuthor>" +
                                         modified,
                                     "<Viewpoints Guid='v'><Viewpoint>v.bcfv</Viewpoint></Viewpoints>", status)},
             {"t/v.bcfv",
              viewpointOf("<Selection><Component IfcGuid='" + std::string(doorOfHouse) + "'/></Selection>")}});
    };
    const std::string note = "1\t2b_TX4KeSUsSwjWBToxytC\tIfcDoor\tFront door\t0\t";
    EXPECT_EQ(imported(topic("Gap", "", "Open")),
              "1 note added and 0 changed in notes.xml.\n" + note + "open\tEva\t2020-01-01T00:00:00Z\t\t\tGap\n");
    EXPECT_EQ(imported(topic("Gap",
                             "<ModifiedDate>2020-01-02T00:00:00Z</ModifiedDate>"
                             "<ModifiedAuthor>Max</ModifiedAuthor>",
                             "Closed")),
              "0 notes added and 1 changed in notes.xml.\n" + note +
                  "resolved\tEva\t2020-01-01T00:00:00Z\tMax\t2020-01-02T00:00:00Z\tGap\n");
    EXPECT_EQ(imported(topic("Old", "<ModifiedDate>2020-01-02T00:00:00Z</ModifiedDate>", "Open")),
              "Nothing was stored.\nannotate: Note 1 stays, as the topic isn't newer.\n" + note +
                  "resolved\tEva\t2020-01-01T00:00:00Z\tMax\t2020-01-02T00:00:00Z\tGap\n");
    EXPECT_EQ(runOn(store, {"undo"}).output, "Taken back: import " + (directory / "in.bcf").string() + ".\n");
    EXPECT_EQ(runOn(store, {"notes"}).output, note + "open\tEva\t2020-01-01T00:00:00Z\t\t\tGap\n");
}

TEST_F(TopicsImportTest, areRefusedInASentenceIfTheArchiveIsBad) {
    struct Case {
        Files files;
        const char* message;
    };
    const std::string good = markup(topicId, "<Title>T</Title>");
    std::string deep;
    for (int depth = 0; depth < 100; ++depth) {
        deep.insert(0, "<a>").append("</a>");
    }
    const Case cases[] = {
        {{{"readme.txt", "none"}}, "in.bcf is a zip archive without a topic of BCF in it (markup.bcf).\n"},
        {{{"../t/markup.bcf", good}},
         "in.bcf holds a file \"../t/markup.bcf\", whose path leads out of it. It isn't read.\n"},
        {{{"/t/markup.bcf", good}},
         "in.bcf holds a file \"/t/markup.bcf\", whose path leads out of it. It isn't read.\n"},
        {{{"C:\\markup.bcf", good}},
         "in.bcf holds a file \"C:/markup.bcf\", whose path leads out of it. It isn't read.\n"},
        {{{"t/markup.bcf", "<Markup><Topic>"}},
         "t/markup.bcf in in.bcf isn't well-formed XML (line 1: no element found).\n"},
        {{{"t/markup.bcf", "<Markup/>"}}, "t/markup.bcf in in.bcf has no Topic, as each has to have.\n"},
        {{{"t/markup.bcf", "<!DOCTYPE a [<!ENTITY b 'bbbb'>]><Markup><Topic>&b;</Topic></Markup>"}},
         "t/markup.bcf in in.bcf has a document type declaration, which isn't taken.\n"},
        {{{"t/markup.bcf", deep}}, "t/markup.bcf in in.bcf is nested more than 64 deep.\n"},
        {{{"bcf.version", "<Version VersionId='1.0'/>"}, {"t/markup.bcf", good}},
         "in.bcf is of the version 1.0 of BCF. Versions 2.0, 2.1 and 3.0 are read.\n"},
    };
    for (const Case& each : cases) {
        const Outcome outcome = runOn(store, {"import", pack(each.files)});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(std::regex_replace(outcome.error, std::regex((directory / "").string()), ""),
                  std::string("annotate: ") + each.message);
        EXPECT_FALSE(std::filesystem::exists(store)) << each.message;
    }
    const std::string whole = contentOf(pack({{"t/markup.bcf", good}}));
    setContent(directory / "cut.bcf", whole.substr(0, whole.size() / 2));
    setContent(directory / "none.bcf", "none");
    std::string broken = whole;
    broken[45] = static_cast<char>(broken[45] ^ 0x55);
    setContent(directory / "broken.bcf", broken);
    for (const char* const name : {"cut.bcf", "none.bcf", "broken.bcf", "missing.bcf"}) {
        expectRefusal({HOUSE, "import", directory / name, "--store", store}, 1, name);
    }
}

} // namespace
} // namespace annotate
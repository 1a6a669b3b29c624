#include "Annotate/HouseTest.h"
#include "Annotate/ZipArchive.h"

#include <cstdlib>
#include <regex>

namespace annotate {
namespace {

using orv::tests::contentOf;
using orv::tests::setContent;

class TopicsExportTest : public HouseTest {
protected:
    /// The content of an entry, with ids and times told as such.
    static std::string entry(const std::string& archive, const std::string& ending) {
        ZipArchive read(archive);
        for (std::size_t place = 0; place < read.getNames().size(); ++place) {
            if (read.getNames()[place].ends_with(ending)) {
                const std::regex id("[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}");
                const std::regex time("20[0-9]{2}-[0-9]{2}-[0-9]{2}T[0-9:.]+Z");
                return std::regex_replace(std::regex_replace(read.contentOf(place), id, "ID"), time, "TIME");
            }
        }
        return "no such entry";
    }
};

TEST_F(TopicsExportTest, areNotesForOtherPrograms) {
    runOn(store, {"note", wallOfHouse, "Is it load-bearing?\nAsk <Ben> & \"Cleo\".", "--priority", "2"});
    runOn(store, {"note", projectOfHouse, "Who signs?"});
    runOn(store, {"resolve", "2", "--author", "Ben"});
    const std::string archive = directory / "out.bcf";
    EXPECT_EQ(runOn(store, {"export", archive}).error,
              "annotate: The objects of 1 topic have no place to look at, and are named in the description.\n");
    EXPECT_EQ(entry(archive, "bcf.version"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Version VersionId=\"3.0\"/>\n");
    EXPECT_EQ(entry(archive, "markup.bcf"),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<Markup>
<Header>
<Files>
<File IfcProject="0LeYZ57GppGnMF4TCfOPic" IsExternal="true">
<Filename>House.ifc</Filename>
</File>
</Files>
</Header>
<Topic Guid="ID" TopicType="Remark" TopicStatus="Open">
<Title>Is it load-bearing?</Title>
<Priority>2</Priority>
<CreationDate>TIME</CreationDate>
<CreationAuthor>Anna</CreationAuthor>
<Description>Is it load-bearing?
Ask &lt;Ben&gt; &amp; "Cleo".</Description>
<Viewpoints>
<ViewPoint Guid="ID">
<Viewpoint>viewpoint.bcfv</Viewpoint>
</ViewPoint>
</Viewpoints>
</Topic>
</Markup>
)");
    EXPECT_EQ(entry(archive, "viewpoint.bcfv"),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<VisualizationInfo Guid="ID">
<Components>
<Selection>
<Component IfcGuid="1jXyBr6EAquR0PHYXIrQ4_"/>
</Selection>
<Visibility DefaultVisibility="true"/>
</Components>
<PerspectiveCamera>
<CameraViewPoint>
<X>8</X>
<Y>-7.85</Y>
<Z>4</Z>
</CameraViewPoint>
<CameraDirection>
<X>-0.6666666666666666</X>
<Y>0.6666666666666666</Y>
<Z>-0.3333333333333333</Z>
</CameraDirection>
<CameraUpVector>
<X>-0.2357022603955158</X>
<Y>0.2357022603955158</Y>
<Z>0.9428090415820632</Z>
</CameraUpVector>
<FieldOfView>60</FieldOfView>
<AspectRatio>1.5</AspectRatio>
</PerspectiveCamera>
</VisualizationInfo>
)");
    EXPECT_EQ(entry(archive, "extensions.xml"), R"(<?xml version="1.0" encoding="UTF-8"?>
<Extensions>
<TopicTypes>
<TopicType>Remark</TopicType>
</TopicTypes>
<TopicStatuses>
<TopicStatus>Open</TopicStatus>
<TopicStatus>Closed</TopicStatus>
</TopicStatuses>
<Priorities>
<Priority>2</Priority>
</Priorities>
<Users>
<User>Anna</User>
<User>Ben</User>
</Users>
</Extensions>
)");
}

TEST_F(TopicsExportTest, comeBackAsTheyWere) {
    runOn(store, {"note", wallOfHouse, "Is it load-bearing?", "--priority", "-2"});
    runOn(store, {"note", doorOfHouse, "  Two lines,\n\nof which one is " + std::string(200, 'l') + "ong  "});
    runOn(store, {"note", projectOfHouse, "On no place"});
    runOn(store, {"note", doorOfHouse, "   "});
    runOn(store, {"note", doorOfHouse, "See\n\nObject: IfcWall, GlobalId 1jXyBr6EAquR0PHYXIrQ4_"});
    runOn(store, {"note", doorOfHouse, "\x01\r\n\xff \xEF\xBF\xBE _x0041_ _x005F_ <&>]]>\n"});
    runOn(store, {"resolve", "1", "3", "--author", "Ben"});
    for (const char* const version : {"3.0", "2.1"}) {
        const std::string archive = directory / "out.bcf";
        const std::string again = directory / "again.bcf";
        const std::string other = directory / (std::string(version) + ".xml");
        ASSERT_EQ(runOn(store, {"export", archive, "--bcf", version}).status, 0);
        EXPECT_EQ(runOn(other, {"import", archive}).error, "");
        EXPECT_EQ(runOn(other, {"notes"}).output, runOn(store, {"notes"}).output);
        ASSERT_EQ(runOn(other, {"export", again, "--bcf", version}).status, 0);
        EXPECT_EQ(contentOf(again), contentOf(archive)) << version;
        EXPECT_NE(contentOf(archive), "");
        EXPECT_EQ(runOn(store, {"import", archive}).output, "Nothing was stored. 6 notes were like that already.\n");
    }
}

TEST_F(TopicsExportTest, areValidByTheSchemas) {
    const char* const schemas = std::getenv("ORV_BCF_SCHEMAS");
    if (schemas == nullptr) {
        GTEST_SKIP() << "ORV_BCF_SCHEMAS doesn't name the folder of the schemas.";
    }
    runOn(store, {"note", wallOfHouse, "Is it load-bearing?", "--priority", "-2"});
    runOn(store, {"note", projectOfHouse, "On no place"});
    runOn(store, {"note", doorOfHouse, " \t"});
    runOn(store, {"note", doorOfHouse, "\x01\xff"});
    runOn(store, {"resolve", "1", "--author", "Ben"});
    const std::pair<const char*, const char*> versions[] = {{"2.1", "/xsd21/"}, {"3.0", "/xsd30/"}};
    for (const auto& [version, folder] : versions) {
        const std::string path = directory / "out.bcf";
        ASSERT_EQ(runOn(store, {"export", path, "--bcf", version}).status, 0);
        ZipArchive archive(path);
        for (std::size_t place = 0; place < archive.getNames().size(); ++place) {
            const std::string& name = archive.getNames()[place];
            const std::string schema = name.ends_with("markup.bcf") ? "markup.xsd"
                                       : name.ends_with(".bcfv")    ? "visinfo.xsd"
                                       : name == "bcf.version"      ? "version.xsd"
                                                                    : "extensions.xsd";
            const std::string document = directory / "document.xml";
            setContent(document, archive.contentOf(place));
            const std::string command =
                std::string(XMLLINT " --noout --schema ") + schemas + folder + schema + ' ' + document + " 2>&1";
            EXPECT_EQ(std::system(command.c_str()), 0) << version << ' ' << name;
        }
    }
}

} // namespace
} // namespace annotate

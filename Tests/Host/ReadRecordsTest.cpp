#include "Host/ReadRecords.h"

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Support/StoreTest.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace orv::host {
namespace {

using domain::shared::enhancementsforreferencemodel::Enhancements;
using tests::contentOf;
using tests::SampleRecord;
using tests::setContent;

class ReadRecordsTest : public tests::StoreTest {
protected:
    static std::string textsOf(const RecordsRead& read) {
        std::string texts;
        for (const auto& record : read.records) {
            for (const auto& [name, text] : dynamic_cast<const SampleRecord&>(*record).received) {
                texts += name + '=' + text + ' ';
            }
        }
        return texts;
    }
};

TEST_F(ReadRecordsTest, findsWhatALoadFinds) {
    const std::string document = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<!DOCTYPE Enhancements [<!ENTITY door "Door">]>
<!-- c --><Enhancements x="1">text<Sample y="2"><OwnerId>1jXyBr6EAquR0PHYXIrQ4_</OwnerId>
<Text> &lt;&door;_x000B__x0041_ <![CDATA[a]]><!-- c -->b</Text><Empty/><Blank><![CDATA[]]></Blank>
<Deep><Deeper>z</Deeper>y</Deep><Comment><!--of it-->x</Comment><Pi><?p of it?></Pi><a_x0020_b>c</a_x0020_b></Sample>
<Sample/><Other><Text>z</Text></Other><Sample><Text>)"
                                 "\xE9"
                                 R"(</Text></Sample><Other/><x_x0020_y/>
</Enhancements>)";
    setContent(path, document);
    std::istringstream stream(document);
    for (const RecordsRead& read : {readRecords(path), readRecords(stream)}) {
        EXPECT_FALSE(read.failure);
        EXPECT_EQ(read.leftOut, (std::map<std::string, std::size_t>{{"Other", 2}, {"x y", 1}}));
        EXPECT_EQ(read.records.size(), 3U);
        EXPECT_EQ(textsOf(read), "OwnerId=1jXyBr6EAquR0PHYXIrQ4_ Text= <Door\x0b"
                                 "A a Blank= Deep= Comment=of it Pi=of it a b=c Text=\xC3\xA9 ");
    }
    const std::string expected = textsOf(readRecords(path));
    EXPECT_EQ(contentOf(path), document);
    std::string loaded;
    for (const auto& record : Enhancements::getOrCreateEnhancementsDb()->getRecords()) {
        for (const auto& [name, text] : dynamic_cast<const SampleRecord&>(*record).received) {
            loaded += name + '=' + text + ' ';
        }
    }
    EXPECT_EQ(loaded, expected);
}

TEST_F(ReadRecordsTest, tellsWhyThereIsNothing) {
    const auto of = [this](const char* content) {
        setContent(path, content);
        return readRecords(path);
    };
    std::istringstream closed;
    closed.setstate(std::ios_base::failbit);
    std::ifstream failing(directory / "."); // a directory can be opened
    const std::pair<RecordsRead, const char*> cases[] = {
        {readRecords(directory / "missing"), "There is no file."},
        {readRecords(directory / "."), "The file can't be read: it isn't a regular file."},
        {readRecords(closed), "The file can't be read: the stream isn't good."},
        {readRecords(failing), "The file can't be read: the stream can't be read to its end."},
        {of(""), "Line 1, column 1: no element found."},
        {of("<Enhancements>\n <Sample></Enhancements>"), "Line 2, column 12: mismatched tag."},
        {of("<Notes><Sample/></Notes>"), "The root is Notes, not Enhancements."},
    };
    using Reason = ReadFailure::Reason;
    const Reason reasons[] = {Reason::Missing,       Reason::Unreadable,    Reason::Unreadable, Reason::Unreadable,
                              Reason::NotWellFormed, Reason::NotWellFormed, Reason::OtherRoot};
    for (std::size_t number = 0; number < std::size(cases); ++number) {
        const auto& [read, sentence] = cases[number];
        ASSERT_TRUE(read.failure) << sentence;
        EXPECT_EQ(read.failure->reason, reasons[number]) << sentence;
        EXPECT_EQ(read.failure->toString(), sentence);
        EXPECT_TRUE(read.records.empty() && read.leftOut.empty()) << sentence;
    }
}

} // namespace
} // namespace orv::host

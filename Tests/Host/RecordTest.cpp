#include "Host/Record.h"

#include "Support/EveryField.h"
#include "Support/GermanLocale.h"
#include "Support/StoreTest.h"

#include <clocale>
#include <limits>

namespace orv::host {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using tests::attributesOf;
using tests::EveryField;
using tests::Factory;
using tests::StringAttributes;
using tests::Urgency;

using RecordTest = tests::StoreTest;

/// What the file brings back of a record that is written.
StringAttributes storedForm(const EveryField& record) {
    StringAttributes attributes;
    for (const auto& [name, value] : record.getAttributes()) {
        if (!value.isEmpty()) {
            attributes.emplace_back(name, value.get<std::string>());
        }
    }
    return attributes;
}

TEST_F(RecordTest, bringsEachValueBackFromItsTextInAnyLocale) {
    ASSERT_NE(std::setlocale(LC_ALL, tests::germanLocale), nullptr);
    using Limits = std::numeric_limits<double>;
    const std::pair<void (*)(EveryField&), const char*> cases[] = {
        // clang-format off
        {[](EveryField& r) { r.truth = true; }, ">Truth=true>"},
        {[](EveryField& r) { r.number = std::numeric_limits<int>::min(); }, ">Number=-2147483648>"},
        {[](EveryField& r) { r.count = 4294967295; }, ">Count=4294967295>"},
        {[](EveryField& r) { r.total = std::numeric_limits<std::int64_t>::min(); }, ">Total=-9223372036854775808>"},
        {[](EveryField& r) { r.real = 0.1; }, ">Real=0.1>"},
        {[](EveryField& r) { r.real = -0.0; }, ">Real=-0>"},
        {[](EveryField& r) { r.real = Limits::denorm_min(); }, ">Real=5e-324>"},
        {[](EveryField& r) { r.real = Limits::max(); }, ">Real=1.7976931348623157e+308>"},
        {[](EveryField& r) { r.real = Limits::infinity(); }, ">Real=INF>"},
        {[](EveryField& r) { r.real = -Limits::infinity(); }, ">Real=-INF>"},
        {[](EveryField& r) { r.real = Limits::quiet_NaN(); }, ">Real=NaN>"},
        {[](EveryField& r) { r.text = ""; }, ">Text=>"},
        {[](EveryField& r) { r.text = " a;\n"; }, ">Text= a;\n>"},
        {[](EveryField& r) { r.id = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}; }, ">Id=00000100800mG51WS82GeB>"},
        {[](EveryField& r) { r.urgency = Urgency::Low; }, ">Urgency=low>"},
        {[](EveryField& r) { r.date = 2024y / 2 / 29; }, ">Date=2024-02-29>"},
        {[](EveryField& r) { r.date = -44y / 3 / 15; }, ">Date=-0044-03-15>"},
        {[](EveryField& r) { r.date = {}; }, ">Date=0000-00-00>"},
        {[](EveryField& r) { r.second = sys_days(1969y / 12 / 31) + 86399s; }, ">Second=1969-12-31T23:59:59Z>"},
        {[](EveryField& r) { r.second = sys_seconds::min(); }, ">Second=-292277022657-01-27T08:29:52Z>"},
        {[](EveryField& r) { r.second = sys_seconds::max(); }, ">Second=292277026596-12-04T15:30:07Z>"},
        {[](EveryField& r) { r.millisecond = sys_days(2024y / 2 / 29) - 1ms; }, ">Millisecond=2024-02-28T23:59:59.999Z>"},
        {[](EveryField& r) { r.nanosecond = std::chrono::system_clock::time_point::min(); },
         ">Nanosecond=1677-09-21T00:12:43.145224192Z>"},
        {[](EveryField& r) { r.nanosecond = std::chrono::system_clock::time_point::max(); },
         ">Nanosecond=2262-04-11T23:47:16.854775807Z>"},
        {[](EveryField& r) { r.perhaps = 2.5; }, ">Perhaps=2.5>"},
        {[](EveryField& r) { r.perhaps = std::nullopt; }, ">Perhaps>"},
        {[](EveryField& r) { r.perhapsText = ""; }, ">PerhapsText=>"},
        {[](EveryField& r) { r.perhapsText = std::nullopt; }, ">PerhapsText>"},
        {[](EveryField& r) { r.texts = {"a;b", "", ","}; }, ">Texts=a;b>Texts=>Texts=,>"},
        {[](EveryField& r) { r.texts = {""}; }, ">Texts=>"},
        {[](EveryField& r) { r.texts = {}; }, ">Texts>"},
        {[](EveryField& r) { r.truths = {true, false}; }, ">Truths=true>Truths=false>"},
        {[](EveryField& r) { r.urgencies = {Urgency::Normal}; }, ">Urgencies=as usual>"},
        // clang-format on
    };
    for (const auto& [set, text] : cases) {
        EveryField record;
        set(record);
        EXPECT_NE((attributesOf(record) + '>').find(text), std::string::npos) << text << attributesOf(record);
        EveryField read;
        read.setAttributes(storedForm(record));
        EXPECT_EQ(read.getUnreadTexts(), StringAttributes()) << text;
        for (const auto& [name, anyText] : storedForm(record)) {
            read.setAsItIs(name);
        }
        EXPECT_EQ(attributesOf(read), attributesOf(record));
    }
}

TEST_F(RecordTest, takesTheFormsOfATextAndWritesItBackAsItStood) {
    struct Text {
        const char* field;
        const char* text;
        const char* taken; ///< The text of the value, null if the field can't take it.
    };
    const Text cases[] = {
        // clang-format off
        {"Truth", "1", "true"}, {"Truth", " true\n", "true"}, {"Truth", "TRUE", nullptr}, {"Truth", "", nullptr},
        {"Number", "+05", "5"}, {"Number", "-0", "0"}, {"Number", "2147483648", nullptr}, {"Number", "1.0", nullptr},
        {"Number", "+-5", nullptr}, {"Number", "+", nullptr}, {"Number", "0x1", nullptr}, {"Count", "-1", nullptr},
        {"Real", "1.50", "1.5"}, {"Real", "+.5E1", "5"}, {"Real", "+INF", "INF"}, {"Real", "inf", nullptr},
        {"Real", "nan", nullptr}, {"Real", "-infinity", nullptr}, {"Real", "1,5", nullptr}, {"Real", "1e999", nullptr},
        {"Real", "+-1", nullptr}, {"Real", "1.5 m", nullptr},
        {"Id", "00000001-0002-0003-0405-060708090A0B", "00000100800mG51WS82GeB"}, {"Id", "wall", nullptr},
        {"Urgency", " low ", "low"}, {"Urgency", "Low", nullptr}, {"Urgency", "5", nullptr},
        {"Date", "2024-02-29+01:00", "2024-02-29"}, {"Date", "2023-02-29", nullptr}, {"Date", "24-02-29", nullptr},
        {"Date", "02024-02-29", nullptr}, {"Date", "2024-2-29", nullptr}, {"Date", "2024-02-29 noon", nullptr},
        {"Date", "40000-01-01", nullptr}, {"Date", "2024-00-00", nullptr},
        {"Second", "2024-02-29T24:00:00Z", "2024-03-01T00:00:00Z"},
        {"Second", "2024-03-01T00:30:00+01:00", "2024-02-29T23:30:00Z"},
        {"Second", "2024-02-29T12:00:00.000-14:00", "2024-03-01T02:00:00Z"},
        {"Second", "2024-02-29T12:00:00", nullptr}, {"Second", "2024-02-29T12:00:00.5Z", nullptr},
        {"Second", "2024-02-29T24:00:01Z", nullptr}, {"Second", "2024-02-29T12:60:00Z", nullptr},
        {"Second", "2024-02-30T12:00:00Z", nullptr}, {"Second", "2024-02-29T12:00:00+14:01", nullptr},
        {"Second", "292277026597-01-01T00:00:00Z", nullptr}, {"Second", "2024-02-29T12:00:00.Z", nullptr},
        {"Nanosecond", "2024-02-29T12:00:00.1234567890Z", "2024-02-29T12:00:00.123456789Z"},
        {"Nanosecond", "2024-02-29T12:00:00.0000000001Z", nullptr}, {"Nanosecond", "2262-04-12T00:00:00Z", nullptr},
        {"Perhaps", "", nullptr}, {"Perhaps", "1.0", "1"}, {"Truths", "maybe", nullptr},
        // clang-format on
    };
    for (const auto& [field, text, taken] : cases) {
        EveryField record;
        record.setAttributes({{field, text}});
        const auto shown = [name = std::string(field)](const char* value) { return '>' + name + '=' + value + '>'; };
        EXPECT_NE(attributesOf(record).find(shown(text)), std::string::npos) << field << ' ' << text;
        EXPECT_EQ(record.getUnreadTexts(), StringAttributes(taken == nullptr ? 1 : 0, {field, text}));
        record.setAsItIs(field);
        EveryField untouched;
        untouched.perhapsText = std::nullopt; // as there is no element for it
        const bool isDefault = attributesOf(record) == attributesOf(untouched);
        EXPECT_EQ(isDefault, taken == nullptr) << field << ' ' << text;
        if (taken != nullptr) {
            EXPECT_NE((attributesOf(record) + '>').find(shown(taken)), std::string::npos) << field << ' ' << text;
        }
    }
}

TEST_F(RecordTest, keepsATextThatAFieldCannotTakeUntilTheProgramSetsIt) {
    EveryField record;
    record.setAttributes({{"Number", "many"}, {"Truths", "true"}, {"Truths", "perhaps"}, {"Number", "some"}});
    EXPECT_EQ(record.number, 7);
    EXPECT_EQ(record.getUnreadTexts(),
              (StringAttributes{{"Number", "many"}, {"Number", "some"}, {"Truths", "true"}, {"Truths", "perhaps"}}));
    EXPECT_NE(attributesOf(record).find(">Number=many>Number=some>Count"), std::string::npos);
    record.number = 8;
    record.truths = {false};
    EXPECT_EQ(record.getUnreadTexts(), StringAttributes());
    EXPECT_NE(attributesOf(record).find(">Number=8>Count"), std::string::npos);
    record.number = 7;
    EXPECT_NE(attributesOf(record).find(">Number=7>Count"), std::string::npos);

    record.setAttributes({{"Number", "many"}});
    record.setAsItIs("Number");
    EXPECT_NE(attributesOf(record).find(">Number=7>Count"), std::string::npos);
}

TEST_F(RecordTest, isStoredAndLoadedWithNothingElse) {
    Factory::registerClass(std::make_unique<EveryField>());
    const auto addOne = [] {
        auto record = std::make_unique<EveryField>();
        record->texts = {"a", "]]>\x01"};
        std::unique_ptr<tests::EnhancementBase> added = std::move(record);
        tests::Enhancements::addEnhancement(std::move(added));
        return std::string();
    };
    tests::inAnotherProcess(addOne);
    const std::string expected = documentOf(R"(  <Every>
    <OwnerId>0000000000000000000000</OwnerId>
    <Truth>false</Truth>
    <Number>7</Number>
    <Count>0</Count>
    <Total>0</Total>
    <Real>0</Real>
    <Text>none</Text>
    <Id>0000000000000000000000</Id>
    <Urgency>as usual</Urgency>
    <Date>0000-00-00</Date>
    <Second>1970-01-01T00:00:00Z</Second>
    <Millisecond>1970-01-01T00:00:00Z</Millisecond>
    <Nanosecond>1970-01-01T00:00:00Z</Nanosecond>
    <Perhaps/>
    <PerhapsText>default</PerhapsText>
    <Texts>a</Texts>
    <Texts>]]&gt;_x0001_</Texts>
    <Truths/>
    <Urgencies/>
  </Every>
)");
    EXPECT_EQ(tests::contentOf(path), expected);
    const auto& records = tests::Enhancements::getOrCreateEnhancementsDb()->getRecords();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(dynamic_cast<const EveryField&>(*records[0]).texts, (std::vector<std::string>{"a", "]]>\x01"}));
    EXPECT_EQ(tests::contentOf(path), expected);
    EXPECT_EQ(fileCount(), 1);
}

} // namespace
} // namespace orv::host

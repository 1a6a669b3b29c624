#include "Host/PropertyEdits.h"

#include <gtest/gtest.h>

namespace orv::host {
namespace {

using namespace std::chrono_literals;
using object::Logical;
using object::PropertyValue;
using Form = PropertyEdit::Form;

PropertyEdit edit(std::string set, std::string property, Form form, std::vector<PropertyValue> values,
                  std::string unit = {}) {
    return {std::move(set),
            std::move(property),
            form,
            std::move(values),
            std::move(unit),
            "Anna \"A\"",
            std::chrono::sys_days(2024y / 2 / 29) + 12h + 250ms};
}

TEST(PropertyEdits, areLinesThatTellThem) {
    const std::pair<PropertyEdit, const char*> cases[] = {
        {edit("Pset_WallCommon", "FireRating", Form::Single, {"F90"}), R"(Pset_WallCommon.FireRating single "F90")"},
        {edit("Our walls", "", Form::Single, {" a\\\n\r\x01\xff"}),
         "\"Our walls\".\"\" single \" a\\\\\\n\\r\x01\xff\""},
        {edit("A.B", "C by", Form::Enumerated, {"NEW", "by", "unit"}), R"("A.B"."C by" enumerated "NEW" "by" "unit")"},
        {edit("A", "B", Form::Bounded, {1.0, PropertyValue(), -2}, "kN"),
         R"(A.B bounded lower 1.0 set-point -2 unit "kN")"},
        {edit("A", "B", Form::Bounded, {PropertyValue(), 1e300, PropertyValue()}), "A.B bounded upper 1e+300"},
        {edit("A", "B", Form::List, {true, false, Logical::True, Logical::False, Logical::Unknown, -0.0}),
         "A.B list true false .T. .F. .U. -0.0"},
        {edit("A", "B", Form::Table, {1, "a", 2, "b"}), R"(A.B table 1 "a" 2 "b")"},
        {edit("A", "B", Form::Unset, {}), "A.B unset"},
    };
    for (const auto& [told, begin] : cases) {
        const std::string line = begin + std::string(R"( by "Anna \"A\"" at 2024-02-29T12:00:00.25Z)");
        EXPECT_EQ(lineOf(told), line);
        const auto read = editOf(line);
        ASSERT_TRUE(read) << line;
        EXPECT_EQ(read->set, told.set);
        EXPECT_EQ(read->property, told.property);
        EXPECT_EQ(read->unit, told.unit);
        EXPECT_EQ(read->author, told.author);
        ASSERT_EQ(read->values.size(), told.values.size());
        for (std::size_t number = 0; number < told.values.size(); ++number) {
            EXPECT_EQ(read->values[number].getIndex(), told.values[number].getIndex()) << line;
        }
        EXPECT_EQ(lineOf(*read), line);
        for (std::size_t length = 0; length < line.size(); ++length) {
            EXPECT_FALSE(editOf(line.substr(0, length))) << line.substr(0, length);
        }
    }
}

TEST(PropertyEdits, areToldByNoOtherLines) {
    const std::string end = R"( by "" at 2024-02-29T12:00:00Z)";
    ASSERT_TRUE(editOf("A.B single 1" + end));
    for (const char* begin :
         {"A single 1", "A.B double 1", "A.B single", "A.B single 1 2", "A.B single x", "A.B single  1",
          "A.B single none", R"(A.B single "\x")", "A.B table 1", "A.B table", "A.B list", "A.B unset 1",
          "A.B bounded 1", "A.B bounded upper 1 lower 1", ".B single 1", "A-B.C unset"}) {
        EXPECT_FALSE(editOf(begin + end)) << begin;
    }
    EXPECT_FALSE(editOf("A.B single 1" + end + ' '));
}

} // namespace
} // namespace orv::host

#include "Core/Math/3D/Bounding3D.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace orv::math::_3d {
namespace {

using ExtentTest = tests::ReportTest;
using tests::Reports;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double unset = 1.7976931348623157e308;

std::string shown(const Extent& extent) {
    std::ostringstream text;
    for (const auto& corner : {extent.lowerLeft, extent.upperRight}) {
        text << corner.x << ' ' << corner.y << ' ' << corner.z << ' ';
    }
    return text.str();
}

struct Union {
    Extent box;
    Extent other;
    Extent united;
    Reports reports;
};

TEST_F(ExtentTest, growsToHoldTheOtherAndReportsAxesOutOfOrder) {
    const Extent small({1, 1, 1}, {2, 2, 2});
    const Extent large({0, 0, 0}, {3, 3, 3});
    const Extent inverted({2, 2, 2}, {1, 1, 1});
    const std::string source = "Source/Core/Math/3D/Bounding3D:";
    const std::string beginning = ": orv::math::_3d::Bounding::Bounding: LowerLeft is not ";
    const Reports all = {source + "43" + beginning + "left of UpperRight",
                         source + "44" + beginning + "lower than UpperRight",
                         source + "45" + beginning + "nearer than UpperRight"};
    const Union unions[] = {
        {small, large, large, {}},
        {small, {{0, 1.5, 5}, {1.5, 9, 6}}, {{0, 1, 1}, {2, 9, 6}}, {}},
        {Extent(), small, small, {}},
        {small, Extent(), small, {}},
        {Extent(), Extent(), Extent(), {}},
        {small, {{nan, 0, nan}, {nan, nan, 3}}, {{1, 0, 1}, {2, 2, 3}}, {}},
        {{{nan, 1, 1}, {nan, 2, 2}}, large, {{nan, 0, 0}, {nan, 3, 3}}, {}},
        {inverted, inverted, inverted, all},
        {{{0, 5, 0}, {1, 1, 1}}, {{0, 6, 0}, {1, 2, 1}}, {{0, 5, 0}, {1, 2, 1}}, {all[1]}},
        {{{unset, 0, 0}, {1, 1, 1}}, {{unset, 0, 0}, {0, 1, 1}}, {{unset, 0, 0}, {1, 1, 1}}, {}},
    };
    for (const auto& [box, other, united, expected] : unions) {
        Extent actual = box;
        actual.uniteWith(other);
        EXPECT_EQ(shown(actual), shown(united));
        EXPECT_EQ(takeReports(), expected);
    }
    Extent itself = inverted;
    itself.uniteWith(itself);
    EXPECT_EQ(shown(itself), shown(inverted));
    EXPECT_EQ(takeReports(), all);
    assert::Assert::setEnabled(false);
    itself.uniteWith(itself);
}

} // namespace
} // namespace orv::math::_3d

#include "Core/Math/3D/Bounding3D.h"
#include "Support/ReportTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace orv::math::_3d {
namespace {

using ExtentTest = tests::ReportTest;
using tests::Report;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double unset = 1.7976931348623157e308;

Report reportOf(const std::string& direction, std::uint32_t line) {
    return {"LowerLeft is not " + direction + " UpperRight", "orv::math::_3d::Bounding::Bounding",
            "Source/Core/Math/3D/Bounding3D", line};
}

/// NaN equals NaN here.
bool areEqual(const Extent& a, const Extent& b) {
    const double values[][2] = {{a.lowerLeft.x, b.lowerLeft.x},   {a.lowerLeft.y, b.lowerLeft.y},
                                {a.lowerLeft.z, b.lowerLeft.z},   {a.upperRight.x, b.upperRight.x},
                                {a.upperRight.y, b.upperRight.y}, {a.upperRight.z, b.upperRight.z}};
    return std::all_of(std::begin(values), std::end(values), [](const auto& pair) {
        return pair[0] == pair[1] || (std::isnan(pair[0]) && std::isnan(pair[1]));
    });
}

struct Union {
    Extent box;
    Extent other;
    Extent united;
    std::vector<Report> reports;
};

TEST_F(ExtentTest, growsToHoldTheOtherAndReportsAxesOutOfOrder) {
    const Extent small({1, 1, 1}, {2, 2, 2});
    const Extent large({0, 0, 0}, {3, 3, 3});
    const Extent inverted({2, 2, 2}, {1, 1, 1});
    const std::vector<Report> all = {reportOf("left of", 43), reportOf("lower than", 44), reportOf("nearer than", 45)};
    const Union unions[] = {
        {small, large, large, {}},
        {large, small, large, {}},
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
        EXPECT_TRUE(areEqual(actual, united)) << box.lowerLeft.x << ' ' << other.lowerLeft.x;
        EXPECT_EQ(takeReports(), expected);
    }
    Extent itself = small;
    itself.uniteWith(itself);
    EXPECT_TRUE(areEqual(itself, small));
    assert::Assert::setEnabled(false);
    itself = inverted;
    itself.uniteWith(inverted);
    EXPECT_TRUE(areEqual(itself, inverted));
}

} // namespace
} // namespace orv::math::_3d

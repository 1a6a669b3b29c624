#include "Annotate/BarChart.h"

#include <gtest/gtest.h>

#include <clocale>

namespace annotate {
namespace {

TEST(BarChart, alignsNamesNumbersAndBars) {
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));
    const std::vector<std::string> expected{"Küche     2 ##", "Terrace  11 ###########"};
    EXPECT_EQ(barChart({{"Küche", 2}, {"Terrace", 11}}, 80), expected);
}

TEST(BarChart, isNoWiderThanTheTerminal) {
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));
    const std::vector<std::string> expected{"Grüne Wän…  1000 ###", "Bad            1 #"};
    EXPECT_EQ(barChart({{"Grüne Wände im Keller", 1000}, {"Bad", 1}}, 20), expected);
    EXPECT_TRUE(barChart({}, 20).empty());
}

} // namespace
} // namespace annotate

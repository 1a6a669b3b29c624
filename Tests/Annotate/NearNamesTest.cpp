#include "Annotate/NearNames.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

TEST(NearNames, areThoseOfTheFewestEditsOrElseThoseWithItWithin) {
    struct Case {
        std::string_view wanted;
        std::vector<std::string_view> names;
        std::string_view end;
    };
    const Case cases[] = {
        {"x", {}, "."},
        {"FireRate", {"FireRating", "FireExit"}, "; did you mean FireRating?"},
        {"FIRERATING", {"FireRating"}, "; did you mean FireRating?"},
        {"Rage", {"Range", "Race", "Large", "Page"}, "; did you mean Range, Race or Page?"},
        {"Rage", {"Range", "Wage"}, "; did you mean Range or Wage?"},
        {"abc", {"aBCd", "abc"}, "; did you mean abc?"},
        {"abc", {"axy"}, "; did you mean axy?"},
        {"abc", {"axyz"}, "."},
        {"abcdef", {"abxyzf"}, "; did you mean abxyzf?"},
        {"abcdef", {"uvwxef"}, "."},
        {"abcdef", {"abxyef"}, "; did you mean abxyef?"},
        {"wall",
         {"Pset_WallCommonProperties", "Pset_WallCommon", "Pset_DoorCommon"},
         "; did you mean Pset_WallCommon or Pset_WallCommonProperties?"},
        {"pset",
         {"Pset_DDDD1", "Pset_CCCC", "Pset_BBBB", "Pset_AAAA"},
         "; did you mean Pset_CCCC, Pset_BBBB or Pset_AAAA?"},
        {"ps", {"Pset_AAAA"}, "."},
    };
    for (const auto& [wanted, names, end] : cases) {
        EXPECT_EQ(didYouMean(wanted, names), end) << wanted;
    }
}

} // namespace
} // namespace annotate

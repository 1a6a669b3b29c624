#include "Utilities/ScopeGuard.h"

#include <gtest/gtest.h>

#include <string>

namespace orv {
namespace {

TEST(ScopeGuard, runsEachActionOnceAndItsOwnBeforeItTakesAnother) {
    std::string ran;
    const auto action = [&ran](char name) { return [&ran, name] { ran += name; }; };
    {
        ScopeGuard none;
        ScopeGuard first(action('a'));
        ScopeGuard second(action('b'));
        first = std::move(second);
        EXPECT_EQ(ran, "a");
        auto& same = first;
        first = std::move(same);
        EXPECT_EQ(ran, "a");
        none = ScopeGuard(std::move(first));
        EXPECT_EQ(ran, "a");
    }
    EXPECT_EQ(ran, "ab");
}

} // namespace
} // namespace orv

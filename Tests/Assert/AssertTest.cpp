#include "Assert/Assert.h"

#include <gtest/gtest.h>

#include <string>

namespace orv::assert {
namespace {

constexpr AssertInfo sample{7, "It broke", "orv::f", "Source/F", 12};

TEST(Assert, isDisabledAtStartAndWritesALineToStandardErrorWithoutAReceiver) {
    EXPECT_FALSE(Assert::isEnabled());
    testing::internal::CaptureStderr();
    Assert::setEnabled(true);
    Assert::addAssert(sample);
    EXPECT_TRUE(Assert::isEnabled());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Source/F:12: orv::f: It broke\n");
}

TEST(Assert, receiverMayReplaceItselfWhileItRuns) {
    std::string received;
    Assert::setReceiver([&received, kept = std::string("first")](const AssertInfo& info) {
        Assert::setReceiver([&received](const AssertInfo&) { received += " second"; });
        received += kept + std::to_string(info.number);
    });
    Assert::addAssert(sample);
    Assert::addAssert(sample);
    EXPECT_EQ(received, "first7 second");
}

} // namespace
} // namespace orv::assert

#include "Support/AnotherProcess.h"

#include "Support/Windows/StartedProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace orv::tests {

namespace {

// What the process that started the others tells them.
constexpr const char* directoryVariable = "ORV_TEST_DIRECTORY";
constexpr const char* resultsVariable = "ORV_TEST_RESULTS";

bool isStarted() {
    return !::testing::GTEST_FLAG(internal_run_death_test).empty();
}

TemporaryDirectory shared(const char* variable) {
    if (const char* const given = std::getenv(variable); isStarted() && given != nullptr) {
        return TemporaryDirectory(std::filesystem::path(given));
    }
    return {};
}

void share(const char* variable, const TemporaryDirectory& directory) {
    if (!isStarted()) {
        ::_putenv_s(variable, (directory / "").string().c_str());
    }
}

int failureCount() {
    return ::testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

bool isThere = false;
int number = 0; // of this place in the test

} // namespace

std::string inStartedProcess(const std::function<std::string()>& action, const std::function<bool(int)>& isExpected) {
    static const TemporaryDirectory results = shared(resultsVariable);
    share(resultsVariable, results);
    const auto result = results / std::to_string(number++);
    EXPECT_EXIT(
        {
            isThere = true;
            const int failuresBefore = failureCount();
            setContent(result, action());
            ::_exit(failureCount() == failuresBefore ? 0 : 1);
        },
        isExpected, "");
    return contentOf(result);
}

std::string inAnotherProcess(const std::function<std::string()>& action) {
    return inStartedProcess(action, [](int status) { return status == 0; });
}

TemporaryDirectory directoryOfTest() {
    return shared(directoryVariable);
}

void share(const TemporaryDirectory& directory) {
    share(directoryVariable, directory);
}

bool isOnTheWay() {
    return isStarted() && !isThere;
}

} // namespace orv::tests

#pragma once

#include "Assert/Assert.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orv::tests {

/// Texts of the form "Source/Path:LINE: function: message".
using Reports = std::vector<std::string>;

/// A test with reports enabled. Those that it doesn't take fail it.
class ReportTest : public ::testing::Test {
protected:
    ReportTest() {
        assert::Assert::setReceiver([this](const assert::AssertInfo& info) {
            EXPECT_EQ(info.number, 0U);
            reports.push_back(std::string(info.sourcePath) + ':' + std::to_string(info.line) + ": " +
                              std::string(info.function) + ": " + std::string(info.message));
        });
        assert::Assert::setEnabled(true);
    }

    ~ReportTest() override {
        EXPECT_EQ(reports, Reports());
        assert::Assert::setEnabled(false);
        assert::Assert::setReceiver(nullptr);
    }

    /// The reports since the last call.
    Reports takeReports() { return std::exchange(reports, {}); }

private:
    Reports reports;
};

} // namespace orv::tests

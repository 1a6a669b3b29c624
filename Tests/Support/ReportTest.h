#pragma once

#include "Assert/Assert.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orv::tests {

struct Report {
    std::string message;
    std::string function;
    std::string sourcePath;
    std::uint32_t line = 0;
    std::uint32_t number = 0;

    bool operator==(const Report&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const Report& report) {
        return out << report.sourcePath << ':' << report.line << ": " << report.function << ": " << report.message
                   << " (" << report.number << ')';
    }
};

/// A test with reports enabled. Those that it doesn't take fail it.
class ReportTest : public ::testing::Test {
protected:
    ReportTest() {
        assert::Assert::setReceiver([this](const assert::AssertInfo& info) {
            reports.push_back({std::string(info.message), std::string(info.function), std::string(info.sourcePath),
                               info.line, info.number});
        });
        assert::Assert::setEnabled(true);
    }

    ~ReportTest() override {
        EXPECT_EQ(reports, std::vector<Report>());
        assert::Assert::setEnabled(false);
        assert::Assert::setReceiver(nullptr);
    }

    /// The reports since the last call.
    std::vector<Report> takeReports() { return std::exchange(reports, {}); }

private:
    std::vector<Report> reports;
};

} // namespace orv::tests

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv::assert {

struct AssertInfo {
    std::uint32_t number;
    std::string_view message;
    std::string_view function;
    std::string_view sourcePath;
    std::uint32_t line;
};

/// Keeps the messages of all reports.
struct Assert {
    static bool isEnabled() { return true; }
    static void addAssert(const AssertInfo& info);
    static std::vector<std::string> messages;
};

} // namespace orv::assert

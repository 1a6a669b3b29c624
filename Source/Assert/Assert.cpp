#include "Assert/Assert.h"

#include <iostream>
#include <sstream>
#include <utility>

namespace orv::assert {

namespace {

bool reportsEnabled = false;

std::function<void(const AssertInfo&)>& currentReceiver() {
    static std::function<void(const AssertInfo&)> receiver;
    return receiver;
}

} // namespace

bool Assert::isEnabled() noexcept {
    return reportsEnabled;
}

void Assert::addAssert(const AssertInfo& info) {
    // A copy, so that the receiver may set another one while it runs.
    if (const auto receiver = currentReceiver()) {
        receiver(info);
        return;
    }
    std::ostringstream report;
    report << info.sourcePath << ':' << info.line << ": " << info.function << ": " << info.message << '\n';
    std::cerr << report.str();
}

void Assert::setEnabled(bool enabled) noexcept {
    reportsEnabled = enabled;
}

void Assert::setReceiver(std::function<void(const AssertInfo&)> receiver) {
    currentReceiver() = std::move(receiver);
}

} // namespace orv::assert

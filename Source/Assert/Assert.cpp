#include "Assert/Assert.h"

#include "Assert/CallbackSlot.h"

#include <iostream>
#include <sstream>
#include <utility>

namespace orv::assert {

namespace {

using ReceiverSlot = CallbackSlot<std::function<void(const AssertInfo&)>>;

} // namespace

bool Assert::reportsEnabled = false;

void Assert::addAssert(const AssertInfo& info) {
    if (const auto receiver = ReceiverSlot::get()) {
        (*receiver)(info);
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
    ReceiverSlot::set(std::move(receiver));
}

} // namespace orv::assert

#include "Assert/Assert.h"

namespace orv::assert {

std::vector<std::string> Assert::messages;

void Assert::addAssert(const AssertInfo& info) {
    messages.emplace_back(info.message);
}

} // namespace orv::assert

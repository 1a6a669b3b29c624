#pragma once

#include <functional>
#include <string>

namespace orv::tests {

/// As inAnotherProcess, for one whose exit status is of those. The text is empty if the process was terminated.
std::string inStartedProcess(const std::function<std::string()>& action, const std::function<bool(int)>& isExpected);

} // namespace orv::tests

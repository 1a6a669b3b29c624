#pragma once

#include "Support/TemporaryDirectory.h"

#include <functional>
#include <string>

namespace orv::tests {

/// Runs the action in a process of its own, and returns the text that the action returned. On POSIX that is a copy of
/// this process. Windows has none: there the test program is started again, as GoogleTest does it for death tests, and
/// repeats the test up to this place.
std::string inAnotherProcess(const std::function<std::string()>& action);

/// A directory for the test, the same one in its other processes once it is shared with them.
TemporaryDirectory directoryOfTest();
void share(const TemporaryDirectory& directory);

/// Whether this process is on its way to that place, where it is to change nothing on the disk.
bool isOnTheWay();

} // namespace orv::tests

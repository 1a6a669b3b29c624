#pragma once

#include <functional>

namespace orv::tests {

/// Runs the action in another process and kills that before its call of that number: of the system on POSIX, of the
/// platform's boundary on Windows. Returns false if it ended before.
bool isKilledBefore(int call, const std::function<void()>& action);

} // namespace orv::tests

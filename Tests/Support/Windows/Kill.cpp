#include "Support/Kill.h"

#include "Support/Windows/StartedProcess.h"
#include "Utilities/SystemCalls.h"

#include <chrono>
#include <thread>
#include <utility>
#include <windows.h>

namespace orv::tests {

namespace {

using utilities::SystemCalls;
using utilities::systemCalls;

constexpr int killed = 77;
int callsAhead = 0;

/// Puts a call in the place of another one that ends the process when its turn has come.
template <auto Call>
struct Killing;
template <typename Result, typename... Arguments, Result (*SystemCalls::*Call)(Arguments...)>
struct Killing<Call> {
    static inline Result (*real)(Arguments...);
    static Result call(Arguments... arguments) {
        if (callsAhead-- == 0) {
            ::TerminateProcess(::GetCurrentProcess(), killed);
        }
        return real(arguments...);
    }
    static void install() { real = std::exchange(systemCalls.*Call, call); }
};

template <auto... Calls>
void installEach() {
    (Killing<Calls>::install(), ...);
}

} // namespace

bool isKilledBefore(int call, const std::function<void()>& action) {
    const auto counted = [&] {
        // Until the times of what the test wrote are trusted, or how many calls a load makes would vary.
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        callsAhead = call;
        installEach<&SystemCalls::open, &SystemCalls::close, &SystemCalls::lock, &SystemCalls::unlock,
                    &SystemCalls::getState, &SystemCalls::getStateOf, &SystemCalls::readAt, &SystemCalls::writeAt,
                    &SystemCalls::setSize, &SystemCalls::setModificationTime, &SystemCalls::takeAccess,
                    &SystemCalls::sync, &SystemCalls::rename, &SystemCalls::remove, &SystemCalls::makeDirectory,
                    &SystemCalls::readLink, &SystemCalls::list>();
        action();
        return std::string("ended");
    };
    return inStartedProcess(counted, [](int status) { return status == 0 || status == killed; }).empty();
}

} // namespace orv::tests

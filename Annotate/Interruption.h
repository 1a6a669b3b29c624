#pragma once

#include <csignal>
#include <string>

namespace annotate {

/// What Ctrl-C and a request to terminate do while it lives: the process says that nothing was stored and ends by that
/// signal at once, so that a shell's loop ends too. There is one at a time.
class Interruption {
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// From here on the signal waits.
    void hold();

    /// To be called when it is stored, and that was said. Ends the process if a signal came meanwhile.
    void release();

private:
    sigset_t signals{};
};

} // namespace annotate

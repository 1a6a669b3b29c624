#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace annotate {

/// Shows in the terminal that standard error may be how much of something is done. It stays away for the first second,
/// and takes itself away at the end.
class ProgressBar {
public:
    /// The title tells what is done, total of how many steps that is.
    ProgressBar(std::string shownTitle, std::size_t totalSteps);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// One more step is done.
    void step();

private:
    using Clock = std::chrono::steady_clock;

    std::string title;
    std::size_t total;
    std::size_t done = 0;
    bool isTerminal;
    bool isShown = false;
    Clock::time_point next = Clock::now() + std::chrono::seconds(1);
};

} // namespace annotate

#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace annotate {

/// Shows in the terminal that standard error may be how much of something is done. It stays away for the first second,
/// and takes itself away at the end.
class ProgressBar {
public:
    /// The title tells what is done, total how much that is.
    ProgressBar(std::string shownTitle, std::uintmax_t totalAmount);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// So much of it is done.
    void reach(std::uintmax_t done) {
        if (done >= nextAmount) {
            show(done);
        }
    }

private:
    using Clock = std::chrono::steady_clock;

    void show(std::uintmax_t done);

    std::string title;
    std::uintmax_t total;
    std::uintmax_t nextAmount = 0; ///< Not to ask the clock at each one.
    bool isShown = false;
    Clock::time_point next = Clock::now() + std::chrono::seconds(1);
};

} // namespace annotate

#include "Annotate/ProgressBar.h"

#include "Annotate/System.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <utility>

namespace annotate {

ProgressBar::ProgressBar(std::string shownTitle, std::uintmax_t totalAmount)
    : title(std::move(shownTitle)), total(std::max<std::uintmax_t>(totalAmount, 1)) {
    if (!isTerminal(StandardStream::Error)) {
        nextAmount = std::numeric_limits<std::uintmax_t>::max();
    }
}

ProgressBar::~ProgressBar() {
    if (isShown) {
        std::cerr << "\r\x1b[K";
    }
}

void ProgressBar::show(std::uintmax_t done) {
    constexpr std::size_t width = 30;
    nextAmount = done + std::max<std::uintmax_t>(total / 1000, 1);
    if (Clock::now() < next) {
        return;
    }
    next = Clock::now() + std::chrono::milliseconds(100);
    const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
    const auto filled = static_cast<std::size_t>(part * width);
    std::cerr << '\r' + title + " [" + std::string(filled, '#') + std::string(width - filled, ' ') + "] " +
                     std::to_string(static_cast<int>(part * 100)) + '%';
    isShown = true;
}

} // namespace annotate

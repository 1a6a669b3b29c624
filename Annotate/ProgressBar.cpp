#include "Annotate/ProgressBar.h"

#include "Annotate/System.h"

#include <iostream>
#include <utility>

namespace annotate {

ProgressBar::ProgressBar(std::string shownTitle, std::size_t totalSteps)
    : title(std::move(shownTitle)), total(totalSteps), isTerminal(annotate::isTerminal(StandardStream::Error)) {}

ProgressBar::~ProgressBar() {
    if (isShown) {
        std::cerr << "\r\x1b[K";
    }
}

void ProgressBar::step() {
    constexpr std::size_t width = 30;
    ++done;
    if (!isTerminal || Clock::now() < next) {
        return;
    }
    next = Clock::now() + std::chrono::milliseconds(100);
    const std::size_t filled = done * width / total;
    std::cerr << '\r' + title + " [" + std::string(filled, '#') + std::string(width - filled, ' ') + "] " +
                     std::to_string(done * 100 / total) + '%';
    isShown = true;
}

} // namespace annotate

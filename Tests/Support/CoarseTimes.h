#pragma once

#include "Utilities/SystemCalls.h"

#include <utility>

namespace orv::tests {

/// Has all files keep their times in steps of two seconds for as long as it lives.
class CoarseTimes {
public:
    CoarseTimes() {
        utilities::systemCalls.getState = [](utilities::Handle file, utilities::FileState& state) {
            return coarse(real.getState(file, state), state);
        };
        utilities::systemCalls.getStateOf = [](const std::filesystem::path& path, utilities::FileState& state) {
            return coarse(real.getStateOf(path, state), state);
        };
    }
    ~CoarseTimes() { utilities::systemCalls = real; }
    CoarseTimes(const CoarseTimes&) = delete;
    CoarseTimes& operator=(const CoarseTimes&) = delete;

private:
    static std::errc coarse(std::errc outcome, utilities::FileState& state) {
        constexpr std::int64_t step = 2'000'000'000;
        state.modificationTime -= state.modificationTime % step;
        state.changeTime -= state.changeTime % step;
        return outcome;
    }

    // Initialized by constants, so before this.
    static inline const utilities::SystemCalls real = utilities::systemCalls; // NOLINT(*-interfaces-global-init)
};

} // namespace orv::tests

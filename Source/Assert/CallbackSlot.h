#pragma once

#include "Assert/UntilUnload.h"

#include <memory>
#include <utility>

namespace orv {

/// The process's one place for a function of that type, a std::function that a host sets. It is built on first use and
/// destroyed when the library is unloaded; what calls afterwards finds it empty.
template <typename Function>
class CallbackSlot {
public:
    /// The function; null if none is set. It stays alive with the result, so that it may replace itself while it runs.
    static std::shared_ptr<const Function> get() {
        const auto* const slot = Slot::get();
        return slot == nullptr ? nullptr : *slot;
    }

    /// Sets the function in place of the one before. An empty one leaves none.
    static void set(Function function) {
        if (auto* const slot = Slot::get()) {
            *slot = function ? std::make_shared<const Function>(std::move(function)) : nullptr;
        }
    }

private:
    using Slot = UntilUnload<std::shared_ptr<const Function>>;
};

} // namespace orv

#pragma once

#include <functional>
#include <utility>

namespace orv {

/// Runs an action when it goes out of scope. The action must not throw.
class ScopeGuard {
public:
    /// A guard without an action.
    ScopeGuard() = default;

    /// A guard that owns the action; an empty function is no action.
    explicit ScopeGuard(std::function<void()> atEnd) : action(std::move(atEnd)) {}

    /// Takes the other's action; the other has none afterwards.
    ScopeGuard(ScopeGuard&& other) noexcept : action(std::exchange(other.action, nullptr)) {}

    /// Runs the own action first, if there is one, and then takes the other's.
    ScopeGuard& operator=(ScopeGuard&& other) noexcept {
        if (this != &other) {
            run();
            action = std::exchange(other.action, nullptr);
        }
        return *this;
    }

    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

    ~ScopeGuard() { run(); }

private:
    void run() {
        if (const auto due = std::exchange(action, nullptr)) {
            due();
        }
    }

    std::function<void()> action;
};

} // namespace orv

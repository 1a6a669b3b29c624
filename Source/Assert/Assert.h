#pragma once

#include "Assert/AssertInfo.h"
#include "OrvExport.h"

#include <functional>

namespace orv::assert {

/// The process-wide sink of reports. Code that finds a condition broken asks isEnabled, reports, and goes on.
///
/// Reports are disabled and there is no receiver at start. Called from one thread at a time.
class ORV_ASSERT_EXPORT Assert {
public:
    /// Whether reports are wanted. A check that costs something runs only when this returns true.
    static bool isEnabled() noexcept { return reportsEnabled; }

    /// Hands one report to the receiver, or, without one, writes it to standard error as one line. Reports
    /// are taken also while they are disabled: the caller has asked isEnabled.
    static void addAssert(const AssertInfo& info);

    /// Switches the reports on or off.
    static void setEnabled(bool enabled) noexcept;

    /// Sets what takes the reports from now on, in place of the receiver before. An empty function brings
    /// standard error back, and so does the unloading of the library, which destroys the receiver. The receiver may
    /// call any operation of this class.
    static void setReceiver(std::function<void(const AssertInfo&)> receiver);

private:
    static bool reportsEnabled;
};

} // namespace orv::assert

#pragma once

#include "Host/FieldText.h"

#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <ratio>
#include <string>
#include <string_view>
#include <utility>

/// The texts of dates and times, as FieldText.h says: xs:date and xs:dateTime.
namespace orv::host {

/// The date, "0000-00-00" if it is year_month_day{}. Any other value that isn't a date has a text too, but take
/// refuses it. A time zone is passed over.
/// @{
ORV_HOST_EXPORT std::string textOf(std::chrono::year_month_day value);
ORV_HOST_EXPORT bool take(std::string_view text, std::chrono::year_month_day& value);
/// @}

/// A time in UTC as counted from 1970 on.
struct UtcTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0; ///< From 0 to 999,999,999.
};

/// Ends with "Z". A text must name its time zone, which may be any.
/// @{
ORV_HOST_EXPORT std::string textOf(UtcTime value);
ORV_HOST_EXPORT bool take(std::string_view text, UtcTime& value);
/// @}

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

/// value * factor + addend; nothing if that, or the product, has more than 64 bits. The factor is positive.
constexpr std::optional<std::int64_t> productAndSum(std::int64_t value, std::int64_t factor, std::int64_t addend) {
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
    if (value < least / factor || value > greatest / factor) {
        return std::nullopt;
    }
    const std::int64_t product = value * factor;
    const bool fits = addend < 0 ? product >= least - addend : product <= greatest - addend;
    return fits ? std::optional(product + addend) : std::nullopt;
}

/// Seconds, or a decimal part of them down to nanoseconds.
template <typename Count, std::intmax_t Parts>
using UtcTimePoint = std::chrono::sys_time<std::chrono::duration<Count, std::ratio<1, Parts>>>;

/// As of a UtcTime. A text that is finer than the parts, or out of their range, isn't taken.
/// @{
template <Integer Count, std::intmax_t Parts>
requires(nanosecondsPerSecond % Parts == 0) std::string textOf(UtcTimePoint<Count, Parts> value) {
    const std::int64_t count = value.time_since_epoch().count();
    const std::int64_t rest = count % Parts;
    const bool isBefore = rest < 0; // the second that it is in began one earlier
    return textOf(
        UtcTime{count / Parts - (isBefore ? 1 : 0), (rest + (isBefore ? Parts : 0)) * (nanosecondsPerSecond / Parts)});
}

template <Integer Count, std::intmax_t Parts>
requires(nanosecondsPerSecond % Parts == 0) bool take(std::string_view text, UtcTimePoint<Count, Parts>& value) {
    UtcTime time;
    constexpr std::int64_t part = nanosecondsPerSecond / Parts;
    if (!take(text, time) || time.nanoseconds % part != 0) {
        return false;
    }
    // Towards zero, so that the first second of the range doesn't overflow on the way.
    const bool isBefore = time.seconds < 0 && time.nanoseconds > 0;
    const std::int64_t rest = time.nanoseconds / part - (isBefore ? Parts : 0);
    const auto count = productAndSum(time.seconds + (isBefore ? 1 : 0), Parts, rest);
    if (!count || !std::in_range<Count>(*count)) {
        return false;
    }
    value = UtcTimePoint<Count, Parts>(typename UtcTimePoint<Count, Parts>::duration(static_cast<Count>(*count)));
    return true;
}
/// @}

} // namespace orv::host

#include "Host/TimeText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>

namespace orv::host {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

namespace {

constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t minutesPerHour = 60;
constexpr std::int64_t hoursPerDay = 24;
constexpr std::int64_t minutesPerDay = minutesPerHour * hoursPerDay;
constexpr std::int64_t secondsPerDay = secondsPerMinute * minutesPerDay;

// The calendar repeats itself after so many years.
constexpr std::int64_t yearsPerCycle = 400;
constexpr std::int64_t daysPerCycle = 146'097;

constexpr std::int64_t flooredDivision(std::int64_t dividend, std::int64_t divisor) {
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

/// Appends a number that isn't negative, with zeros ahead of it up to that many digits.
void appendDigits(std::string& text, std::int64_t number, std::size_t atLeast) {
    std::array<char, 20> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    const std::string_view shortest(digits.data(), end);
    text.append(atLeast - std::min(atLeast, shortest.size()), '0').append(shortest);
}

/// A date of any year; what stands in a text, so perhaps none.
struct Date {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;

    bool exists() const { return inCycle().ok(); }

    std::int64_t daysSince1970() const {
        return sys_days(inCycle()).time_since_epoch().count() + flooredDivision(year, yearsPerCycle) * daysPerCycle;
    }

    static Date ofDay(std::int64_t daysSince1970) {
        const std::int64_t cycles = flooredDivision(daysSince1970, daysPerCycle);
        const year_month_day date(sys_days(std::chrono::days(daysSince1970 - cycles * daysPerCycle)));
        return {static_cast<int>(date.year()) + cycles * yearsPerCycle, static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day())};
    }

    void appendTo(std::string& text) const {
        text += year < 0 ? "-" : "";
        appendDigits(text, year < 0 ? -year : year, 4);
        text += '-';
        appendDigits(text, month, 2);
        text += '-';
        appendDigits(text, day, 2);
    }

private:
    /// The same date of a year from 0 to 399.
    year_month_day inCycle() const {
        const std::int64_t yearInCycle = year - flooredDivision(year, yearsPerCycle) * yearsPerCycle;
        return {std::chrono::year(static_cast<int>(yearInCycle)), std::chrono::month(static_cast<unsigned>(month)),
                std::chrono::day(static_cast<unsigned>(day))};
    }
};

/// Reads a text from its beginning.
class Reader {
public:
    explicit Reader(std::string_view text) : rest(trimmed(text)) {}

    bool isAtEnd() const { return rest.empty(); }

    bool skip(char letter) {
        const bool isNext = !rest.empty() && rest.front() == letter;
        rest.remove_prefix(isNext ? 1 : 0);
        return isNext;
    }

    /// A number of that many digits, or more if so many may be.
    std::optional<std::int64_t> number(std::size_t atLeast, std::size_t atMost) {
        const std::size_t length = digitCount();
        if (length < atLeast || length > atMost) {
            return std::nullopt;
        }
        std::int64_t value = 0;
        for (std::size_t read = 0; read < length; ++read, rest.remove_prefix(1)) {
            value = 10 * value + (rest.front() - '0');
        }
        return value;
    }

    /// A number of two digits up to the greatest.
    std::optional<std::int64_t> twoDigits(std::int64_t greatest) {
        const auto value = number(2, 2);
        return value && *value <= greatest ? value : std::nullopt;
    }

    std::optional<Date> date() {
        constexpr std::size_t yearDigits = 12; // as many as 64 bits of seconds span
        const bool isNegative = skip('-');
        const bool hasZeros = rest.size() > 4 && rest[0] == '0' && rest.find('-') != 4;
        const auto years = number(4, yearDigits);
        const auto months = years && skip('-') ? number(2, 2) : std::nullopt;
        const auto days = months && skip('-') ? number(2, 2) : std::nullopt;
        return days && !hasZeros ? std::optional(Date{isNegative ? -*years : *years, *months, *days}) : std::nullopt;
    }

    /// The time since the beginning of the day; 24:00:00 is taken.
    std::optional<UtcTime> timeOfDay() {
        const auto hours = twoDigits(hoursPerDay);
        const auto minutes = hours && skip(':') ? twoDigits(minutesPerHour - 1) : std::nullopt;
        const auto seconds = minutes && skip(':') ? twoDigits(secondsPerMinute - 1) : std::nullopt;
        const auto fraction = !seconds ? std::nullopt : skip('.') ? nanoseconds() : 0;
        if (!fraction) {
            return std::nullopt;
        }
        const UtcTime time{(*hours * minutesPerHour + *minutes) * secondsPerMinute + *seconds, *fraction};
        const bool isPastMidnight = time.seconds > secondsPerDay || (time.seconds == secondsPerDay && *fraction > 0);
        return isPastMidnight ? std::nullopt : std::optional(time);
    }

    /// The minutes that the zone is ahead of UTC.
    std::optional<std::int64_t> zone() {
        if (skip('Z')) {
            return 0;
        }
        constexpr std::int64_t mostHours = 14;
        const std::int64_t sign = skip('+') ? 1 : skip('-') ? -1 : 0;
        const auto hours = sign != 0 ? twoDigits(mostHours) : std::nullopt;
        const auto minutes = hours && skip(':') ? twoDigits(minutesPerHour - 1) : std::nullopt;
        if (!minutes || *hours * minutesPerHour + *minutes > mostHours * minutesPerHour) {
            return std::nullopt;
        }
        return sign * (*hours * minutesPerHour + *minutes);
    }

private:
    static constexpr bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

    std::size_t digitCount() const {
        return static_cast<std::size_t>(
            std::distance(rest.begin(), std::find_if_not(rest.begin(), rest.end(), isDigit)));
    }

    /// The digits of a fraction, the tenth and those behind it zeros.
    std::optional<std::int64_t> nanoseconds() {
        std::int64_t value = 0;
        std::int64_t unit = nanosecondsPerSecond;
        for (std::size_t remaining = digitCount(); remaining > 0; --remaining) {
            unit /= 10;
            if (unit == 0 && rest.front() != '0') {
                return std::nullopt;
            }
            value += unit * (rest.front() - '0');
            rest.remove_prefix(1);
        }
        return unit == nanosecondsPerSecond ? std::nullopt : std::optional(value);
    }

    std::string_view rest;
};

} // namespace

std::string textOf(year_month_day value) {
    std::string text;
    Date{static_cast<int>(value.year()), static_cast<unsigned>(value.month()), static_cast<unsigned>(value.day())}
        .appendTo(text);
    return text;
}

bool take(std::string_view text, year_month_day& value) {
    Reader reader(text);
    const auto date = reader.date();
    if (!date || (!reader.isAtEnd() && !reader.zone()) || !reader.isAtEnd()) {
        return false;
    }
    const bool isNone = date->year == 0 && date->month == 0 && date->day == 0;
    const bool isInRange =
        date->year >= static_cast<int>(year::min()) && date->year <= static_cast<int>(year::max()) && date->exists();
    if (isNone || isInRange) {
        value = year_month_day(year(static_cast<int>(date->year)), month(static_cast<unsigned>(date->month)),
                               day(static_cast<unsigned>(date->day)));
    }
    return isNone || isInRange;
}

std::string textOf(UtcTime value) {
    const std::int64_t days = flooredDivision(value.seconds, secondsPerDay);
    const std::int64_t seconds =
        value.seconds % secondsPerDay + (value.seconds % secondsPerDay < 0 ? secondsPerDay : 0);
    std::string text;
    Date::ofDay(days).appendTo(text);
    text += 'T';
    appendDigits(text, seconds / secondsPerMinute / minutesPerHour, 2);
    text += ':';
    appendDigits(text, seconds / secondsPerMinute % minutesPerHour, 2);
    text += ':';
    appendDigits(text, seconds % secondsPerMinute, 2);
    text += '.';
    appendDigits(text, value.nanoseconds, 9);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text + 'Z';
}

bool take(std::string_view text, UtcTime& value) {
    Reader reader(text);
    const auto date = reader.date();
    const auto time = date && date->exists() && reader.skip('T') ? reader.timeOfDay() : std::nullopt;
    const auto zone = time ? reader.zone() : std::nullopt;
    if (!zone || !reader.isAtEnd()) {
        return false;
    }
    // Towards zero, so that the first day of the range doesn't overflow on the way.
    const std::int64_t days = date->daysSince1970();
    const std::int64_t rest = time->seconds - *zone * secondsPerMinute - (days < 0 ? secondsPerDay : 0);
    const auto seconds = productAndSum(days + (days < 0 ? 1 : 0), secondsPerDay, rest);
    if (seconds) {
        value = {*seconds, time->nanoseconds};
    }
    return seconds.has_value();
}

} // namespace orv::host

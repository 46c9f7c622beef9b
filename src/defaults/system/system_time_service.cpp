#include "defaults/system/system_time_service.h"

#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "kxjob/value.h"

namespace kxjob {
namespace {

std::string Padded(std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string DaysText(double days) {
    return DoubleText(days) + (days == 1 ? " day" : " days");
}

/// `milliseconds` is a whole number that a double holds exactly.
std::string PartsText(double milliseconds) {
    constexpr std::int64_t kMinute = 60'000;
    constexpr std::int64_t kHour = 60 * kMinute;
    constexpr std::int64_t kDay = 24 * kHour;
    const auto total = static_cast<std::int64_t>(milliseconds);
    std::string text;
    const std::int64_t days = total / kDay;
    if (days > 0) text += DaysText(static_cast<double>(days)) + " ";
    if (total >= kHour) text += std::to_string(total % kDay / kHour) + " h ";
    if (total >= kMinute) text += std::to_string(total % kHour / kMinute) + " min ";
    return text + DoubleText(static_cast<double>(total % kMinute) / 1000) + " s";
}

}  // namespace

std::string SystemTimeService::NowISODateTime() {
    using std::chrono::floor;
    const auto now = floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto today = floor<std::chrono::days>(now);
    const std::chrono::year_month_day date(today);
    const std::chrono::hh_mm_ss time(now - today);
    return Padded(static_cast<int>(date.year()), 4) + "-" + Padded(static_cast<unsigned>(date.month()), 2) +
           "-" + Padded(static_cast<unsigned>(date.day()), 2) + "T" + Padded(time.hours().count(), 2) + ":" +
           Padded(time.minutes().count(), 2) + ":" + Padded(time.seconds().count(), 2) + "." +
           Padded(time.subseconds().count(), 3) + "Z";
}

std::string SystemTimeService::DurationText(double duration) {
    if (std::isnan(duration)) return "an unknown time";
    if (std::isinf(duration)) return duration < 0 ? "-endless" : "endless";
    // From here on a double no longer tells milliseconds apart.
    constexpr double kLastExactMillisecond = 9'007'199'254'740'992.0;
    constexpr double kSecondsOfDay = 86'400;
    const double seconds = std::fabs(duration);
    const double milliseconds = std::round(seconds * 1000);
    const std::string text = milliseconds < kLastExactMillisecond
                                 ? PartsText(milliseconds)
                                 : DaysText(std::floor(seconds / kSecondsOfDay));
    return duration < 0 && milliseconds > 0 ? "-" + text : text;
}

}  // namespace kxjob

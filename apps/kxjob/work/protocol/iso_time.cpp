#include "work/protocol/iso_time.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <string_view>

#include "kxjob/automation_error.h"

namespace kxjob::command {
namespace {

constexpr std::string_view kForm = "0000-00-00T00:00:00.000Z";

/// Raises when the digits of `form` are no digits in `text`, or its other signs are others.
void RequireForm(std::string_view text, std::string_view form) {
    bool fits = text.size() == form.size();
    for (std::size_t i = 0; fits && i < form.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        fits = form[i] == '0' ? isDigit : text[i] == form[i];
    }
    if (!fits) {
        throw AutomationError(error_number::kTypeMismatch, "kxjob work",
                              "'" + std::string(text) + "' is no ISO time in UTC");
    }
}

int Number(std::string_view text, std::size_t from, std::size_t digits) {
    int number = 0;
    const std::string_view part = text.substr(from, digits);
    std::from_chars(part.data(), part.data() + part.size(), number);
    return number;
}

}  // namespace

std::string LaterBy(const std::string& isoTime, double seconds) {
    RequireForm(isoTime, kForm);
    namespace chrono = std::chrono;
    const chrono::sys_days day = chrono::year(Number(isoTime, 0, 4)) /
                                 chrono::month(static_cast<unsigned>(Number(isoTime, 5, 2))) /
                                 chrono::day(static_cast<unsigned>(Number(isoTime, 8, 2)));
    const chrono::sys_time<chrono::milliseconds> time =
        day + chrono::hours(Number(isoTime, 11, 2)) + chrono::minutes(Number(isoTime, 14, 2)) +
        chrono::seconds(Number(isoTime, 17, 2)) + chrono::milliseconds(Number(isoTime, 20, 3)) +
        chrono::milliseconds(std::llround(seconds * 1000));
    const chrono::sys_days newDay = chrono::floor<chrono::days>(time);
    const chrono::year_month_day date(newDay);
    const chrono::hh_mm_ss clock(time - newDay);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                       clock.hours().count(), clock.minutes().count(), clock.seconds().count(),
                       clock.subseconds().count());
}

}  // namespace kxjob::command

#include "records/iso_time.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>

#include "kxjob/automation_error.h"

namespace kxjob::command {
namespace {

/// The whole number that these characters are, if they are digits only.
std::optional<int> Digits(std::string_view text) {
    int number = 0;
    if (text.empty() || text.front() == '-') return std::nullopt;
    const auto [stopped, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc() || stopped != text.data() + text.size()) return std::nullopt;
    return number;
}

/// The milliseconds of ".123Z", ".5Z" or "Z".
std::optional<int> Milliseconds(std::string_view text) {
    if (text == "Z") return 0;
    if (text.size() < 3 || text.front() != '.' || text.back() != 'Z') return std::nullopt;
    constexpr std::size_t kDigits = 3;
    std::string digits(text.substr(1, text.size() - 2));
    if (digits.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    digits.resize(kDigits, '0');  // what is finer is left out
    return Digits(digits);
}

}  // namespace

std::optional<Moment> ParseIsoTime(std::string_view text) {
    constexpr std::string_view kShape = "0000-00-00T00:00:00";
    if (text.size() <= kShape.size()) return std::nullopt;
    for (const std::size_t i : {4U, 7U, 10U, 13U, 16U}) {
        if (text[i] != kShape[i]) return std::nullopt;
    }
    const std::optional<int> year = Digits(text.substr(0, 4));
    const std::optional<int> month = Digits(text.substr(5, 2));
    const std::optional<int> day = Digits(text.substr(8, 2));
    const std::optional<int> hour = Digits(text.substr(11, 2));
    const std::optional<int> minute = Digits(text.substr(14, 2));
    const std::optional<int> second = Digits(text.substr(17, 2));
    const std::optional<int> fraction = Milliseconds(text.substr(kShape.size()));
    if (!year || !month || !day || !hour || !minute || !second || !fraction) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 60) return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(*hour) + std::chrono::minutes(*minute) +
           std::chrono::seconds(*second) + std::chrono::milliseconds(*fraction);
}

std::string IsoTime(Moment moment) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", int(date.year()), unsigned(date.month()),
                       unsigned(date.day()), time.hours().count(), time.minutes().count(),
                       time.seconds().count(), time.subseconds().count());
}

std::string LaterBy(std::string_view isoTime, double seconds) {
    const std::optional<Moment> moment = ParseIsoTime(isoTime);
    if (!moment) {
        throw AutomationError(error_number::kTypeMismatch, "kxjob",
                              "'" + std::string(isoTime) + "' is no ISO time in UTC");
    }
    return IsoTime(*moment + std::chrono::milliseconds(std::llround(seconds * 1000)));
}

std::string DurationInWords(double seconds) {
    constexpr double kMinute = 60;
    constexpr double kHour = 60 * kMinute;
    constexpr double kDay = 24 * kHour;
    if (seconds < 10) return fmt::format("{:.2f} s", seconds);
    if (seconds < kMinute) return fmt::format("{:.0f} s", seconds);
    if (seconds < kHour) {
        return fmt::format("{:.0f} min {:.0f} s", std::floor(seconds / kMinute),
                           std::floor(std::fmod(seconds, kMinute)));
    }
    if (seconds < kDay) {
        return fmt::format("{:.0f} h {:.0f} min", std::floor(seconds / kHour),
                           std::floor(std::fmod(seconds, kHour) / kMinute));
    }
    return fmt::format("{:.0f} d {:.0f} h", std::floor(seconds / kDay),
                       std::floor(std::fmod(seconds, kDay) / kHour));
}

}  // namespace kxjob::command

#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kxjob::command {

using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

/// The moment of a time as stores hold it, "2026-03-01T09:30:15.123Z"; the fraction may be left out. Nothing
/// for any other text.
std::optional<Moment> ParseIsoTime(std::string_view text);

/// The same the other way.
std::string IsoTime(Moment moment);

/// So many seconds later, to the millisecond. Raises Type mismatch for a text that is no such time.
std::string LaterBy(std::string_view isoTime, double seconds);

/// "2 d 3 h", "4 min 5 s", "0.12 s": as exact as a person wants to have it.
std::string DurationInWords(double seconds);

}  // namespace kxjob::command

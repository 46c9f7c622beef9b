#pragma once

#include <string>

namespace kxjob::command {

/// `isoTime` ("2026-03-01T09:30:15.123Z") and so many seconds later, to the millisecond.
/// Raises Type mismatch for another form of text.
std::string LaterBy(const std::string& isoTime, double seconds);

}  // namespace kxjob::command

#pragma once

#include <string>

#include "collaborators/time_service.h"

namespace kxjob {

/// The system's clock, in UTC: "2026-03-01T09:30:15.123Z". Durations are seconds, shown to the millisecond:
/// "1 day 2 h 3 min 4.5 s", beginning with the first part that is not zero.
class SystemTimeService : public TimeService {
public:
    std::string NowISODateTime() override;
    std::string DurationText(double duration) override;
};

}  // namespace kxjob

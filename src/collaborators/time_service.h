#pragma once

#include <string>

namespace kxjob {

/// Times as text.
class TimeService {
public:
    virtual ~TimeService() = default;
    /// Now, as ISO date-time text that sorts by time.
    virtual std::string NowISODateTime() = 0;
    /// A duration as people read it, for log lines.
    virtual std::string DurationText(double duration) = 0;
};

}  // namespace kxjob

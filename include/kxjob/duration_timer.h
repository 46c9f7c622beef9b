#pragma once

#include "kxjob/component.h"
#include "kxjob/export.h"

namespace kxjob {

/// A stopwatch on the timer component "kxTimer_%v.Timer". It runs from its creation on.
class KXJOB_EXPORT DurationTimer {
public:
    /// Starts. Raises what the creation of the timer component raises; there is no object then.
    DurationTimer();
    DurationTimer(const DurationTimer&) = delete;
    DurationTimer& operator=(const DurationTimer&) = delete;
    ~DurationTimer();

    /// Starts again from zero, on a new timer component.
    void Start();
    /// The time since the last start in the timer component's unit (seconds with the one that ships with the
    /// library). Reading neither stops nor resets.
    double Duration() const;

private:
    ComponentRef timer_;
};

}  // namespace kxjob

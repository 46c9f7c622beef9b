#pragma once

namespace kxjob::command {

/// While it lives, SIGTERM and SIGINT ask the process to stop: the first is only noted, the second ends the
/// process at once with 128 plus the signal's number. At most one object at a time.
class StopSignals {
public:
    StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    ~StopSignals();

    /// Waits for a signal, a call of Wake or the end of that time; true when a signal has come until now.
    bool Wait(int milliseconds);
    /// Ends a wait; on any thread.
    static void Wake();
};

}  // namespace kxjob::command

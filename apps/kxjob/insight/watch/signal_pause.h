#pragma once

#include <csignal>

namespace kxjob::command {

/// Pauses that a signal ends at once. While it lives, SIGINT, SIGTERM and SIGHUP reach this thread in its
/// pauses only, so that what it does between them is whole.
class SignalPause {
public:
    SignalPause();
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;
    ~SignalPause();

    /// Waits. Gives the signal that wants the program to end; 0 when the time is over or the window has
    /// changed its size.
    int Wait(double seconds);

private:
    sigset_t awaited_{};
    sigset_t former_{};
};

/// Ends the program by a signal, as it would have without anybody's care.
void EndBySignal(int signal);

}  // namespace kxjob::command

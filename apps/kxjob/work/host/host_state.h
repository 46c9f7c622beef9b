#pragma once

#include <condition_variable>
#include <exception>
#include <mutex>

namespace kxjob::command {

/// Whether the host goes on, and what ended it. On any thread.
class HostState {
public:
    void Stop();
    bool Stopping() const;
    /// Stops, and keeps the first error for the end.
    void Fail(std::exception_ptr error);
    std::exception_ptr Failure() const;

    /// Waits so long, but no longer than until Wake or Stop.
    void Pause(double seconds);
    /// There may be something new to do.
    void Wake();

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool stopping_ = false;
    unsigned news_ = 0;
    std::exception_ptr failure_;
};

}  // namespace kxjob::command

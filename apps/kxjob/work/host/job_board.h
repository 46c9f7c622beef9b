#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <string>

namespace kxjob::command {

/// What the workers of a process know of jobs together.
class JobBoard {
public:
    /// Leaves a job alone for a while.
    void Avoid(const std::string& job, double seconds);
    bool IsAvoided(const std::string& job) const;

    /// Somebody begins to work on the job; the first of them is kept.
    void Begin(const std::string& job);
    /// The first job that was begun; empty before.
    std::string First() const;

    /// The square of the seconds since the item before was completed, by any worker, or since the job was
    /// begun here.
    double SquaredIncrement(const std::string& job);

private:
    using Clock = std::chrono::steady_clock;

    mutable std::mutex mutex_;
    std::map<std::string, Clock::time_point> avoidedUntil_;
    std::map<std::string, Clock::time_point> lastCompletion_;
    std::string first_;
};

}  // namespace kxjob::command

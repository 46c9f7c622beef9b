#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>

namespace kxjob::command {

/// How far long work has come: a bar that is drawn over itself when a person watches, a plain line every two
/// seconds when not. Written by one thread.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    ProgressBar(std::ostream& out, bool isTerminal, std::size_t total);

    /// Shows that `done` items are finished, `failed` of them without success; not more often than is of use.
    void Update(std::size_t done, std::size_t failed) { UpdateAt(Clock::now(), done, failed); }
    /// Shows the end.
    void Finish(std::size_t done, std::size_t failed);
    /// As Update, at a time of the caller's.
    void UpdateAt(Clock::time_point now, std::size_t done, std::size_t failed);

private:
    void Show(Clock::time_point now, std::size_t done, std::size_t failed);

    std::ostream& out_;
    bool isTerminal_;
    std::size_t total_;
    Clock::time_point start_;
    Clock::time_point nextShow_;
};

}  // namespace kxjob::command

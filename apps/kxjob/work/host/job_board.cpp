#include "work/host/job_board.h"

namespace kxjob::command {

void JobBoard::Avoid(const std::string& job, double seconds) {
    const std::lock_guard lock(mutex_);
    avoidedUntil_[job] =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

bool JobBoard::IsAvoided(const std::string& job) const {
    const std::lock_guard lock(mutex_);
    const auto until = avoidedUntil_.find(job);
    return until != avoidedUntil_.end() && Clock::now() < until->second;
}

void JobBoard::Begin(const std::string& job) {
    const std::lock_guard lock(mutex_);
    if (first_.empty()) first_ = job;
    lastCompletion_.try_emplace(job, Clock::now());
}

std::string JobBoard::First() const {
    const std::lock_guard lock(mutex_);
    return first_;
}

double JobBoard::SquaredIncrement(const std::string& job) {
    const std::lock_guard lock(mutex_);
    const Clock::time_point now = Clock::now();
    const auto last = lastCompletion_.try_emplace(job, now).first;
    const double seconds = std::chrono::duration<double>(now - last->second).count();
    last->second = now;
    return seconds * seconds;
}

}  // namespace kxjob::command

#include "work/host/host_state.h"

#include <chrono>
#include <utility>

namespace kxjob::command {

void HostState::Stop() {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    ++news_;
    changed_.notify_all();
}

bool HostState::Stopping() const {
    const std::lock_guard lock(mutex_);
    return stopping_;
}

void HostState::Fail(std::exception_ptr error) {
    {
        const std::lock_guard lock(mutex_);
        if (failure_ == nullptr) failure_ = std::move(error);
    }
    Stop();
}

std::exception_ptr HostState::Failure() const {
    const std::lock_guard lock(mutex_);
    return failure_;
}

void HostState::Pause(double seconds) {
    std::unique_lock lock(mutex_);
    const unsigned before = news_;
    changed_.wait_for(lock, std::chrono::duration<double>(seconds), [&] { return news_ != before; });
}

void HostState::Wake() {
    const std::lock_guard lock(mutex_);
    ++news_;
    changed_.notify_all();
}

}  // namespace kxjob::command

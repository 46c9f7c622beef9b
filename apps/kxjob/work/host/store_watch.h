#pragma once

#include <atomic>
#include <chrono>
#include <string>

#include "kxjob/automation_error.h"
#include "work/host/host_state.h"
#include "work/host/work_report.h"

namespace kxjob::command {

/// Whether an error says that the store cannot be reached or is busy for now: the same again may succeed.
bool IsStoreAway(const AutomationError& error);

/// Lets the work of all threads survive that the store is away for a while.
class StoreWatch {
public:
    StoreWatch(HostState& state, WorkReport& report) : state_(state), report_(report) {}

    /// Runs `step` until it gets through, with growing pauses; so it must be one that can be repeated. Raises
    /// every error that waiting does not mend; while the host stops, also the others after a short time.
    template <typename Step>
    auto Through(Step&& step) {
        for (Tries tries;; Wait(tries)) {
            try {
                if constexpr (std::is_void_v<decltype(step())>) {
                    step();
                    return IsBack();
                } else {
                    auto result = step();
                    IsBack();
                    return result;
                }
            } catch (const AutomationError& error) {
                if (!IsStoreAway(error) || !Note(tries, error)) throw;
            }
        }
    }

    /// For a thread that comes again by itself: takes note of an error; false when it is of another kind.
    bool IsAway(const AutomationError& error);
    void IsBack();

private:
    using Clock = std::chrono::steady_clock;
    struct Tries {
        Clock::time_point first = Clock::now();
        double pause = 0.05;
    };

    bool Note(const Tries& tries, const AutomationError& error);
    void Wait(Tries& tries);

    HostState& state_;
    WorkReport& report_;
    std::atomic<bool> away_ = false;
};

}  // namespace kxjob::command

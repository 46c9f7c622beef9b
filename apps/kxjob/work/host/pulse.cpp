#include "work/host/pulse.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "work/protocol/task_claims.h"

namespace kxjob::command {
namespace {

constexpr double kLongestBeat = 0.5;
constexpr std::chrono::milliseconds kOldestUnwritten{1000};
constexpr const char* kStopCommand = "STOP";

}  // namespace

Pulse::Pulse(HostContext& host)
    : host_(host),
      store_(host.options.store),
      lease_(std::chrono::duration_cast<Clock::duration>(
          std::chrono::duration<double>(host.options.leaseSeconds))),
      nextTakeover_(Clock::now()) {}

void Pulse::Run() {
    const double pause = std::min(kLongestBeat, host_.options.leaseSeconds / 6);
    while (!isStopped_) {
        try {
            Beat();
            host_.watch.IsBack();
        } catch (const AutomationError& error) {
            if (!host_.watch.IsAway(error)) return host_.state.Fail(std::current_exception());
            // The claims of living hosts ran out as well: they are given time to renew them.
            nextTakeover_ = Clock::now() + lease_;
        }
        host_.state.Pause(pause);
    }
}

void Pulse::Stop() {
    isStopped_ = true;
    host_.state.Wake();
}

void Pulse::Beat() {
    const Clock::time_point now = Clock::now();
    if (now >= nextRenewal_) {
        Renew();
        nextRenewal_ = now + lease_ / 3;
    }
    WriteOldResults();
    if (now >= nextTakeover_) {
        TakeOverExpired();
        nextTakeover_ = now + lease_ / 2;
    }
}

void Pulse::Renew() {
    const std::vector<std::shared_ptr<ActiveTask>> tasks = host_.tasks.All();
    std::vector<std::string> guids;
    guids.reserve(tasks.size());
    for (const auto& task : tasks) guids.push_back(task->name.task);
    RenewClaims(store_, guids, host_.options.leaseSeconds);
    const std::vector<TaskStanding> standings = StandingsOf(store_, guids);
    for (std::size_t i = 0; i < standings.size(); ++i) {
        tasks[i]->isLost = !standings[i].isRunning;
        tasks[i]->isToldToStop = standings[i].command == kStopCommand;
    }
}

void Pulse::WriteOldResults() {
    for (const auto& task : host_.tasks.All()) {
        const std::lock_guard turn(host_.turn);
        const FinishedItems finished = task->results.WriteIfOlderThan(kOldestUnwritten, store_, task->name);
        host_.report.ItemsFinished(finished.succeeded, finished.failed);
    }
}

void Pulse::TakeOverExpired() {
    for (const ExpiredTask& expired : ExpiredTasks(store_)) {
        TakeOver(store_, expired);
        if (IsTakenOver(store_, expired.name.task)) {
            host_.report.TakenOver(expired.name.task, expired.name.job);
            host_.state.Wake();
        }
    }
}

}  // namespace kxjob::command

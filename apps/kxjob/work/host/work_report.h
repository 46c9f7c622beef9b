#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

namespace kxjob::command {

/// What a host tells about itself: for people a line an event and a status that is drawn over itself on a
/// terminal, for programs one JSON object a line. On any thread.
class WorkReport {
public:
    struct Form {
        bool json = false;
        bool isTerminal = false;
    };

    WorkReport(std::ostream& out, std::ostream& errors, Form form);

    void Begin(int threads);
    void JobStarted(const std::string& job);
    void JobEnded(const std::string& job);
    void ComponentMissing(const std::string& job, const std::string& why);
    void TaskLost(const std::string& task);
    void TakenOver(const std::string& task, const std::string& job);
    void StoreAway(const std::string& why);
    void StoreBack();
    void Stopping();

    /// A thread begins or ceases to work on a job.
    void ThreadsAtWork(int change) { atWork_ += change; }
    void ItemsFinished(std::uint64_t succeeded, std::uint64_t failed);
    /// Shows how far the work is; not more often than is of use.
    void ShowProgress();
    void Summary();

private:
    using Clock = std::chrono::steady_clock;

    void Tell(std::ostream& stream, const nlohmann::ordered_json& event, const std::string& line);
    std::string StatusLine(Clock::time_point now);

    std::mutex mutex_;
    std::ostream& out_;
    std::ostream& errors_;
    Form form_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point lastShown_ = start_;
    std::uint64_t lastDone_ = 0;
    bool statusIsShown_ = false;
    std::atomic<int> atWork_ = 0;
    std::atomic<std::uint64_t> succeeded_ = 0;
    std::atomic<std::uint64_t> failed_ = 0;
    std::atomic<std::uint64_t> jobsEnded_ = 0;
};

}  // namespace kxjob::command

#include "work/host/work_report.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

namespace kxjob::command {
namespace {

using nlohmann::ordered_json;

constexpr std::chrono::milliseconds kStatusRedraw{200};
constexpr std::chrono::seconds kStatusLine{5};

}  // namespace

WorkReport::WorkReport(std::ostream& out, std::ostream& errors, Form form)
    : out_(out), errors_(errors), form_(form) {}

void WorkReport::Begin(int threads) {
    Tell(out_, {{"event", "begin"}, {"threads", threads}}, fmt::format("Working with {} threads.", threads));
}

void WorkReport::JobStarted(const std::string& job) {
    Tell(out_, {{"event", "jobStarted"}, {"job", job}}, "Job " + job + " is RUNNING.");
}

void WorkReport::JobEnded(const std::string& job) {
    ++jobsEnded_;
    Tell(out_, {{"event", "jobEnded"}, {"job", job}}, "Job " + job + " is COMPLETE.");
}

void WorkReport::ComponentMissing(const std::string& job, const std::string& why) {
    Tell(errors_, {{"event", "componentMissing"}, {"job", job}, {"error", why}},
         "Job " + job + " cannot be worked on here: " + why);
}

void WorkReport::TaskLost(const std::string& task) {
    Tell(errors_, {{"event", "taskLost"}, {"task", task}},
         "Task " + task + " has lost its claim; what it had not written is left to others.");
}

void WorkReport::TakenOver(const std::string& task, const std::string& job) {
    Tell(out_, {{"event", "takenOver"}, {"task", task}, {"job", job}},
         "Task " + task + " has been silent for too long: its items are given back.");
}

void WorkReport::StoreAway(const std::string& why) {
    Tell(errors_, {{"event", "storeAway"}, {"error", why}}, "The store is away, waiting for it: " + why);
}

void WorkReport::StoreBack() {
    Tell(errors_, {{"event", "storeBack"}}, "The store is back.");
}

void WorkReport::Stopping() {
    Tell(out_, {{"event", "stopping"}}, "Stopping: the items in work are finished, the others given back.");
}

void WorkReport::ItemsFinished(std::uint64_t succeeded, std::uint64_t failed) {
    succeeded_ += succeeded;
    failed_ += failed;
}

void WorkReport::ShowProgress() {
    const Clock::time_point now = Clock::now();
    if (now - lastShown_ < (form_.isTerminal ? Clock::duration(kStatusRedraw) : Clock::duration(kStatusLine)))
        return;
    const bool isNews = succeeded_ + failed_ != lastDone_;
    if (!form_.isTerminal && !isNews) return;  // a log wants no line for every idle moment
    const std::string status = StatusLine(now);
    if (form_.isTerminal) {
        const std::lock_guard lock(mutex_);
        out_ << "\r\033[K" << status << std::flush;
        statusIsShown_ = true;
    } else {
        Tell(out_,
             {{"event", "progress"},
              {"succeeded", succeeded_.load()},
              {"failed", failed_.load()},
              {"threadsAtWork", atWork_.load()}},
             status);
    }
}

std::string WorkReport::StatusLine(Clock::time_point now) {
    const std::uint64_t done = succeeded_ + failed_;
    const double seconds = std::chrono::duration<double>(now - lastShown_).count();
    const double rate = static_cast<double>(done - lastDone_) / seconds;
    lastShown_ = now;
    lastDone_ = done;
    return fmt::format("{} items done, {} of them failed, {:.0f} items/s, {} threads at work, {} jobs ended",
                       done, failed_.load(), rate, atWork_.load(), jobsEnded_.load());
}

void WorkReport::Summary() {
    const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    const std::uint64_t done = succeeded_ + failed_;
    Tell(out_,
         {{"event", "summary"},
          {"succeeded", succeeded_.load()},
          {"failed", failed_.load()},
          {"jobsEnded", jobsEnded_.load()},
          {"seconds", seconds}},
         fmt::format("{} items done, {} of them failed, {} jobs ended in {:.1f} s: {:.0f} items/s.", done,
                     failed_.load(), jobsEnded_.load(), seconds, static_cast<double>(done) / seconds));
}

void WorkReport::Tell(std::ostream& stream, const ordered_json& event, const std::string& line) {
    const std::lock_guard lock(mutex_);
    if (statusIsShown_) out_ << "\r\033[K" << std::flush;
    statusIsShown_ = false;
    if (form_.json) {
        out_ << event.dump(-1, ' ', false, ordered_json::error_handler_t::replace) << std::endl;
    } else {
        stream << line << std::endl;
    }
}

}  // namespace kxjob::command

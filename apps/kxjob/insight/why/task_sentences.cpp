#include "insight/why/task_sentences.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>

#include "records/iso_time.h"

namespace kxjob::command {
namespace {

/// How long after `time` the store's clock is now; nothing when one of them is no time.
std::optional<double> SecondsSince(const std::optional<std::string>& time, const JobStanding& standing) {
    const std::optional<Moment> then = ParseIsoTime(time.value_or(""));
    const std::optional<Moment> now = ParseIsoTime(standing.storeTime);
    if (!then || !now) return std::nullopt;
    return std::chrono::duration<double>(*now - *then).count();
}

std::string ClaimText(const TaskRecord& task, const JobStanding& standing) {
    const double seconds = std::abs(SecondsSince(task.ended, standing).value_or(0));
    switch (ClaimOf(task, standing.storeTime)) {
        case Claim::None: return "it makes no claim that could run out";
        case Claim::Holds: return fmt::format("its claim holds for another {}", DurationInWords(seconds));
        case Claim::RanOut:
            return fmt::format("its claim ran out {:.0f} s ago: the next worker takes its items over",
                               seconds);
    }
    return "";
}

std::string_view ClaimName(Claim claim) {
    switch (claim) {
        case Claim::None: return "none";
        case Claim::Holds: return "holds";
        case Claim::RanOut: return "ran out";
    }
    return "";
}

std::string WhoIs(const TaskRecord& task) {
    return fmt::format("{} (process {} on {})", task.guid, task.process, task.machine);
}

std::string LockSentence(const JobStanding& standing) {
    const auto holder = std::ranges::find(standing.tasks, standing.lock, &TaskRecord::lock);
    if (holder == standing.tasks.end())
        return fmt::format("Its editor lock {} is held by none of its tasks.", standing.lock);
    return fmt::format("Its editor lock is held by the {} task {}.", holder->state, WhoIs(*holder));
}

}  // namespace

std::vector<std::string> TaskSentences(const JobStanding& standing) {
    std::vector<std::string> sentences;
    for (const TaskRecord& task : standing.tasks) {
        if (task.state != "RUNNING") continue;
        const std::optional<double> age = SecondsSince(task.started, standing);
        sentences.push_back(fmt::format("The task {} has been RUNNING{}; {}.", WhoIs(task),
                                        age ? " for " + DurationInWords(*age) : "",
                                        ClaimText(task, standing)));
    }
    if (sentences.empty()) sentences.emplace_back("No task of it is RUNNING.");
    if (!standing.lock.empty()) sentences.push_back(LockSentence(standing));
    return sentences;
}

Json TasksJson(const JobStanding& standing) {
    const auto numberOrNull = [](std::optional<double> number) { return number ? Json(*number) : Json(); };
    Json tasks = Json::array();
    for (const TaskRecord& task : standing.tasks) {
        if (task.state != "RUNNING") continue;
        std::optional<double> left = SecondsSince(task.ended, standing);
        if (left) left = -*left;
        tasks.push_back({{"task", task.guid},
                         {"machine", task.machine},
                         {"process", task.process},
                         {"ageSeconds", numberOrNull(SecondsSince(task.started, standing))},
                         {"claim", ClaimName(ClaimOf(task, standing.storeTime))},
                         {"claimSeconds", numberOrNull(left)},
                         {"holdsLock", !standing.lock.empty() && task.lock == standing.lock}});
    }
    return tasks;
}

}  // namespace kxjob::command

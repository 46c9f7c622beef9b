#include "insight/why/explanation.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "insight/why/task_sentences.h"
#include "terminal/counted.h"

namespace kxjob::command {
namespace {

constexpr std::size_t kNamedJobs = 5;

// The verdicts on a job that nothing but the others keeps from being given to a worker.
constexpr const char* kNext = "next";
constexpr const char* kIsWaiting = "waiting";
constexpr const char* kFull = "full";

std::string Names(const std::vector<OfferedJob>& jobs) {
    std::string names;
    for (std::size_t i = 0; i < std::min(jobs.size(), kNamedJobs); ++i)
        names += (i == 0 ? "" : ", ") + jobs[i].guid;
    if (jobs.size() > kNamedJobs) names += fmt::format(" and {} more", jobs.size() - kNamedJobs);
    return names;
}

const OfferedJob* JobWithoutType(const std::vector<OfferedJob>& jobs) {
    const auto found = std::ranges::find(jobs, false, &OfferedJob::hasType);
    return found == jobs.end() ? nullptr : &*found;
}

/// A job that no worker is given, whatever the others are.
Explanation ExplainState(const JobRecord& job) {
    if (job.state == "COMPLETE" || job.state == "CANCELLED")
        return {"ended", {fmt::format("The job is {}: there is nothing left to do.", job.state)}};
    if (job.state == "CREATING" || job.state == "READY")
        return {"not-started", {fmt::format("The job is {}: workers get it once it is QUEUED.", job.state)}};
    return {
        "not-started",
        {fmt::format("The job's state is '{}', which workers do not know: they get QUEUED and RUNNING jobs.",
                     job.state)}};
}

/// Its place among the others, when it has one.
Explanation ExplainPlace(const OfferedJob& job, const std::vector<OfferedJob>& offered) {
    const std::optional<std::int64_t> place = PlaceOf(job);
    if (!place) {
        return {kFull,
                {fmt::format("The job has {} RUNNING tasks, and gets no more of them.", job.runningTasks)}};
    }
    const std::vector<OfferedJob> ahead = JobsAheadOf(*place, offered);
    if (!ahead.empty()) {
        return {
            kIsWaiting,
            {fmt::format("{} before it ({}): a QUEUED job comes before every RUNNING one, and of these the "
                         "one with the fewest RUNNING tasks.",
                         ahead.size() == 1 ? "1 job comes" : fmt::format("{} jobs come", ahead.size()),
                         Names(ahead))}};
    }
    const std::size_t others = JobsAt(*place, offered).size() - 1;
    if (others == 0) return {kNext, {"It is the job that the next worker gets."}};
    return {kNext,
            {fmt::format("It is among the jobs that the next worker may get: {} share its place.",
                         Counted(others, "other job"))}};
}

Explanation ExplainOffered(const OfferedJob& job, const JobStanding& standing) {
    if (!job.hasType) {
        return {"type-missing",
                {fmt::format("The store does not have its type {}: no worker is given any job of this store.",
                             job.type)}};
    }
    if (!job.canBeWorkedOn) {
        return {"component-missing",
                {fmt::format("This machine cannot work on it: the component {} of its type {} cannot be "
                             "created ({}).",
                             standing.component, job.type, standing.componentProblem)}};
    }
    if (const OfferedJob* const culprit = JobWithoutType(standing.offered)) {
        return {
            "selection-fails",
            {fmt::format("No worker is given any job of this store: it has no type {}, of which the job {} "
                         "is.",
                         culprit->type, culprit->guid)}};
    }
    return ExplainPlace(job, standing.offered);
}

bool IsGivenToWorkers(const std::string& verdict) {
    return verdict == kNext || verdict == kIsWaiting || verdict == kFull;
}

bool IsInWork(const JobStanding& standing) {
    return std::ranges::any_of(standing.tasks, [&](const TaskRecord& task) {
        return task.state == "RUNNING" && ClaimOf(task, standing.storeTime) != Claim::RanOut;
    });
}

}  // namespace

Explanation Explain(const JobStanding& standing) {
    const OfferedJob* const job = Offered(standing);
    if (job == nullptr) return ExplainState(standing.job);

    Explanation explanation = ExplainOffered(*job, standing);
    std::string first = fmt::format("The job is {}.", job->state);
    if (IsInWork(standing)) {
        explanation.verdict = "in-work";
        first = fmt::format("The job is {} and worked on.", job->state);
    } else if (IsGivenToWorkers(explanation.verdict) && standing.itemsWaiting + standing.itemsInWork == 0) {
        explanation.verdict = "no-items-left";
        first = fmt::format("The job is {}, but has no item left to work on.", job->state);
    }
    explanation.sentences.insert(explanation.sentences.begin(), std::move(first));
    explanation.sentences.push_back(fmt::format("Of its items {} wait, {} are in work and {} have ended.",
                                                standing.itemsWaiting, standing.itemsInWork,
                                                standing.itemsEnded));
    const std::vector<std::string> tasks = TaskSentences(standing);
    explanation.sentences.insert(explanation.sentences.end(), tasks.begin(), tasks.end());
    return explanation;
}

Json ToJson(const JobStanding& standing, const Explanation& explanation) {
    Json ahead = Json::array();
    Json beside = Json::array();
    const OfferedJob* const job = Offered(standing);
    if (const auto place = job == nullptr ? std::nullopt : PlaceOf(*job)) {
        for (const OfferedJob& one : JobsAheadOf(*place, standing.offered)) ahead.push_back(one.guid);
        for (const OfferedJob& one : JobsAt(*place, standing.offered)) {
            if (one.guid != job->guid) beside.push_back(one.guid);
        }
    }
    return {{"job", standing.job.guid},
            {"state", standing.job.state},
            {"verdict", explanation.verdict},
            {"sentences", explanation.sentences},
            {"type", standing.job.type},
            {"component", standing.component},
            {"componentProblem", standing.componentProblem},
            {"jobsAhead", ahead},
            {"jobsBeside", beside},
            {"itemsWaiting", standing.itemsWaiting},
            {"itemsInWork", standing.itemsInWork},
            {"itemsEnded", standing.itemsEnded},
            {"lock", standing.lock},
            {"tasks", TasksJson(standing)}};
}

}  // namespace kxjob::command

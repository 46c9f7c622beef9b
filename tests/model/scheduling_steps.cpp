#include <algorithm>
#include <cctype>
#include <limits>
#include <set>

#include "kxjob/array.h"
#include "model/steps.h"

namespace kxjob::model {
namespace {

std::string Folded(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char character) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    });
    return text;
}

/// The jobs at one state that this machine can execute, and the errors that reading them may end with: which
/// of several comes first is up to the store's order.
struct Candidates {
    std::vector<std::string> jobs;
    std::set<std::int32_t> errors;
};

constexpr auto kNoMetadata = static_cast<std::int32_t>(0x80040000U + 855);
constexpr auto kInvalidUseOfNull = static_cast<std::int32_t>(0x800A005EU);
constexpr auto kDuplicateKey = static_cast<std::int32_t>(0x800A01C9U);

Candidates CandidatesAt(const Tables& read, const char* state) {
    Candidates found;
    std::set<std::string> keys;  // a collection's keys are compared without regard to letter case
    for (const Row* job : read.job.Where([&](const Row& row) { return Holds(row, "jobstateid", state); })) {
        const std::vector<const Row*> types = read.jobType.Where(
            [&](const Row& row) { return Holds(row, "jobtypeid", Held(*job, "jobtypeid")); });
        if (types.empty()) {
            found.errors.insert(kNoMetadata);
            continue;
        }
        const Value& component = Held(*types.front(), "implprogid");
        if (component.IsNull()) found.errors.insert(kInvalidUseOfNull);
        if (component != Value("kxTimer_83.Timer")) continue;
        const std::string guid = Held(*job, "jobguid").Text();
        if (!keys.insert(Folded(guid)).second) found.errors.insert(kDuplicateKey);
        found.jobs.push_back(guid);
    }
    return found;
}

/// The best of the RUNNING jobs, and their rank.
OneOf BestOfRunning(const Tables& read, const std::vector<std::string>& running) {
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    std::vector<std::string> best;
    for (const std::string& job : running) {
        const std::size_t tasks =
            read.jobTask
                .Where([&](const Row& row) {
                    return Holds(row, "jobguid", job) && Holds(row, "jobtaskstateid", "RUNNING");
                })
                .size();
        if (job.empty() && tasks > 0) Raise(0x800A0005U);  // a collection holds no item under an empty key
        if (tasks < fewest) best.clear();
        fewest = std::min(tasks, fewest);
        if (tasks == fewest) best.push_back(job);
    }
    OneOf answers;
    for (const std::string& job : best) {
        answers.emplace_back(Array::List({job, 1.0 / static_cast<double>(fewest + 1)}));
    }
    return answers;
}

Step GetNextJob(Draw& draw, const Tables& /*tables*/) {
    const Address at = draw.Place();
    constexpr double kRankBefore = 0.25;
    return {.name = "GetNextJob",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                std::string job = "as it was";
                double rank = kRankBefore;
                jobs.GetNextJob(at.connection, at.provider, at.qualifier, job, rank);
                return Array::List({job, rank});
            },
            .effect = [=](Tables& read) -> Result {
                CheckQualifier(at.qualifier);
                at.CheckReachable();
                Candidates queued = CandidatesAt(read, "QUEUED");
                Candidates running = CandidatesAt(read, "RUNNING");
                queued.errors.merge(running.errors);
                if (!queued.errors.empty()) throw Raised{{queued.errors.begin(), queued.errors.end()}};
                OneOf answers;
                for (const std::string& job : queued.jobs) answers.emplace_back(Array::List({job, 1.0}));
                if (answers.empty()) answers = BestOfRunning(read, running.jobs);
                if (answers.empty()) answers.emplace_back(Array::List({"as it was", kRankBefore}));
                return answers;
            }};
}

}  // namespace

std::vector<StepKind> SchedulingSteps() {
    return {{"GetNextJob", 5, GetNextJob}};
}

}  // namespace kxjob::model

#include "work/protocol/job_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <vector>

#include "kxjob/automation_error.h"
#include "kxjob/enums.h"
#include "records/job_type_record.h"
#include "work/protocol/item_lots.h"

namespace kxjob::command {
namespace {

constexpr auto kTypeWithoutMetadata = static_cast<std::int32_t>(kObjectErrorBase + 855);

struct Candidate {
    WorkableJob job;
    std::int64_t runningTasks = 0;
};

/// Empty when there is none. A job whose type is unknown stops no other job.
std::string Recommended(JobStore& store) {
    const StoreConnection& connection = store.Connection();
    std::string job;
    double rank = 0;
    try {
        store.Jobs().GetNextJob(connection.connectionString, connection.provider, connection.nameQualifier,
                                job, rank);
    } catch (const AutomationError& error) {
        if (error.Number() != kTypeWithoutMetadata) throw;
    }
    return job;
}

/// The components of the types that can be created here, by type.
std::map<std::string, WorkableJob> WorkableTypes(JobStore& store, const std::string& onlyType) {
    const StoreConnection& connection = store.Connection();
    const Value types = store.Jobs().GetJobType(connection.connectionString, connection.provider,
                                                connection.nameQualifier, onlyType);
    std::map<std::string, WorkableJob> workable;
    for (std::int32_t row = 0; row < RowCount(types); ++row) {
        const RowArray& cells = types.Rows();
        const std::string progId = cells.Cell(jtifComponentInstantiationString, row).ToJoinedText();
        if (!CanCreateHere(progId)) continue;
        workable.insert_or_assign(
            cells.Cell(jtifJobType, row).ToText(),
            WorkableJob{"", progId,
                        cells.Cell(jtifNotificationComponentInstantiationString, row).ToJoinedText()});
    }
    return workable;
}

std::map<std::string, std::int64_t> RunningTasks(JobStore& store) {
    const Value rows = store.Query(
        fmt::format("SELECT jobguid, COUNT(*) FROM {} WHERE jobtaskstateid = 'RUNNING' GROUP BY jobguid",
                    store.Table("jobtask")));
    std::map<std::string, std::int64_t> counts;
    for (std::int32_t row = 0; row < RowCount(rows); ++row) {
        counts[rows.Rows().Cell(0, row).ToJoinedText()] =
            static_cast<std::int64_t>(rows.Rows().Cell(1, row).ToDouble());
    }
    return counts;
}

std::vector<Candidate> Candidates(JobStore& store, const WantedJobs& wanted) {
    const std::map<std::string, WorkableJob> types = WorkableTypes(store, wanted.type);
    const std::map<std::string, std::int64_t> tasks = RunningTasks(store);
    const StoreConnection& connection = store.Connection();
    std::vector<Candidate> candidates;
    for (const char* state : {kQueued, kRunning}) {
        const Value jobs = store.Jobs().GetJob(connection.connectionString, connection.provider,
                                               connection.nameQualifier, wanted.only, wanted.type, state);
        for (std::int32_t row = 0; row < RowCount(jobs); ++row) {
            const std::string guid = jobs.Rows().Cell(jifJobGUID, row).ToText();
            const auto type = types.find(jobs.Rows().Cell(jifJobType, row).ToJoinedText());
            if (type == types.end() || wanted.isAvoided(guid)) continue;
            const auto running = tasks.find(guid);
            candidates.push_back({{guid, type->second.progId, type->second.notificationProgId},
                                  running == tasks.end() ? 0 : running->second});
        }
    }
    return candidates;
}

bool HasItems(JobStore& store, const std::string& job) {
    return !store
                .Cell(fmt::format("SELECT MIN(sequence) FROM {} WHERE jobguid = {}", store.Table("JobItem"),
                                  store.Literal(job)))
                .IsNull();
}

}  // namespace

JobChoice ChooseJob(JobStore& store, const WantedJobs& wanted) {
    const std::string recommended = Recommended(store);
    std::vector<Candidate> candidates = Candidates(store, wanted);
    std::stable_sort(candidates.begin(), candidates.end(),
                     [&](const Candidate& left, const Candidate& right) {
                         const bool leftIsIt = left.job.guid == recommended;
                         const bool rightIsIt = right.job.guid == recommended;
                         if (leftIsIt != rightIsIt) return leftIsIt;
                         return left.runningTasks < right.runningTasks;
                     });
    JobChoice choice;
    for (const Candidate& candidate : candidates) {
        const std::string& guid = candidate.job.guid;
        const bool isClaimable = !LowestWaiting(store, guid).IsNull();
        const bool isUnfinished = isClaimable || HasUnfinishedItems(store, guid);
        choice.anythingLeft |= isUnfinished;
        if (isClaimable || (!isUnfinished && HasItems(store, guid))) {
            choice.job = candidate.job;
            return choice;
        }
    }
    return choice;
}

}  // namespace kxjob::command

#include "insight/watch/job_look.h"

#include "kxjob/job_helper.h"
#include "records/job_record.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

JobLook LookOf(const Row& row) {
    return {.guid = row.Text(sfJobGUID),
            .description = row.Text(sfDescription),
            .state = row.Text(sfJobState),
            .totalItems = row.Whole(sfTotalItemCount),
            .succeededItems = row.Whole(sfSucceededItemCount),
            .failedItems = row.Whole(sfFailedItemCount)};
}

JobLook LookOf(const JobRecord& job) {
    return {.guid = job.guid,
            .description = job.description,
            .state = job.state,
            .totalItems = job.totalItems,
            .succeededItems = job.succeededItems,
            .failedItems = job.failedItems};
}

}  // namespace

std::optional<JobLook> LookAt(const StoreConnection& store, const std::string& guid) {
    const Value rows = JobHelper().GetJobExecutionStatisticsAllowMissing(
        store.connectionString, store.provider, store.nameQualifier, guid);
    if (rows.IsEmpty()) return std::nullopt;
    return LookOf(Row(rows.Rows(), 0));
}

std::vector<JobLook> LookAtOpenJobs(const StoreConnection& store) {
    std::vector<JobLook> looks;
    for (const char* state : {"RUNNING", "QUEUED"}) {
        for (const JobRecord& job : ReadJobs(store, {.state = state})) looks.push_back(LookOf(job));
    }
    return looks;
}

}  // namespace kxjob::command

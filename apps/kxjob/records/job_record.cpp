#include "records/job_record.h"

#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "records/guid_text.h"
#include "records/optional_json.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

JobRecord JobOf(const Row& row) {
    return {.guid = row.Text(jifJobGUID),
            .description = row.Text(jifDescription),
            .type = row.Text(jifJobType),
            .parameters = row.Text(jifParameters),
            .state = row.Text(jifJobState),
            .nextItem = row.Whole(jifNextItem),
            .totalItems = row.Whole(jifTotalItemCount),
            .succeededItems = row.Whole(jifSucceededItemCount),
            .failedItems = row.Whole(jifFailedItemCount),
            .started = row.OptionalText(jifStartDateTime),
            .lastCompletion = row.OptionalText(jifLastCompletedDateTime),
            .sumOfSquaredIncrements = row.Real(jifSumOfTimeIncrementsSquared),
            .applicationState = row.Text(jifApplicationDefinitionGUID),
            .failureNote = row.Text(jifFailureNote)};
}

}  // namespace

std::vector<JobRecord> ReadJobs(const StoreConnection& store, const JobFilter& filter) {
    return ReadRows(JobHelper().GetJob(store.connectionString, store.provider, store.nameQualifier,
                                       filter.guid, filter.type, filter.state, filter.applicationState),
                    JobOf);
}

JobRecord ReadJob(const StoreConnection& store, const std::string& guid) {
    for (const std::string& key : {guid, GuidText(guid)}) {
        std::vector<JobRecord> jobs = ReadJobs(store, {.guid = key});
        if (!key.empty() && !jobs.empty()) return std::move(jobs.front());
    }
    throw AutomationError(error_number::kNoRow, "kxjob", "There is no job " + guid);
}

Json ToJson(const JobRecord& job) {
    return {{"job", job.guid},
            {"type", job.type},
            {"state", job.state},
            {"description", job.description},
            {"applicationState", job.applicationState},
            {"nextItem", job.nextItem},
            {"totalItems", job.totalItems},
            {"succeededItems", job.succeededItems},
            {"failedItems", job.failedItems},
            {"started", OrNull(job.started)},
            {"lastCompletion", OrNull(job.lastCompletion)},
            {"sumOfSquaredIncrements", job.sumOfSquaredIncrements},
            {"parameters", job.parameters},
            {"failureNote", job.failureNote}};
}

}  // namespace kxjob::command

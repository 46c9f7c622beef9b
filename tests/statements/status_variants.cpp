#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

Variant Always(const std::string& method, void (*call)(const VariantStore& store)) {
    return {.method = method, .conditions = {}, .before = {}, .call = call};
}

Variant NextJob(const std::string& condition, const std::string& before) {
    return {.method = "GetNextJob",
            .conditions = {condition},
            .before = {before},
            .call = [](const VariantStore& store) {
                std::string job;
                double rank = 0;
                store.jobs.GetNextJob(store.connectionString, store.provider, store.qualifier, job, rank);
            }};
}

}  // namespace

Family StatusFamily() {
    return {.title = "Status updates and failure notes",
            .methods = {"UpdateJobStatus", "piAdminHistoryWrite", "UpdateJobItemStatus",
                        "AppendJobFailureNote", "AppendJobItemFailureNote"},
            .variants = {
                Always("UpdateJobStatus",
                       [](const VariantStore& store) {
                           store.jobs.UpdateJobStatus(store.connectionString, store.provider, store.qualifier,
                                                      kJobGuid, kAnyJobState);
                       }),
                Always("UpdateJobItemStatus",
                       [](const VariantStore& store) {
                           store.jobs.UpdateJobItemStatus(store.connectionString, store.provider,
                                                          store.qualifier, kItemGuid, kAnyItemState,
                                                          "a start", "an end", kTaskGuid);
                       }),
                Always("AppendJobFailureNote",
                       [](const VariantStore& store) {
                           store.jobs.AppendJobFailureNote(store.connectionString, store.provider,
                                                           store.qualifier, kJobGuid, "a note");
                       }),
                Always("AppendJobItemFailureNote",
                       [](const VariantStore& store) {
                           store.jobs.AppendJobItemFailureNote(store.connectionString, store.provider,
                                                               store.qualifier, kItemGuid, "a note");
                       }),
            }};
}

Family SchedulingFamily() {
    return {.title = "The next job",
            .methods = {"GetNextJob", "LowImpactGetNextJob", "GetQueuedAndRunningJobs", "GetJobTypeProgIDs",
                        "GetHighestRankingRunningJobs"},
            .variants = {
                NextJob("a job is QUEUED", "UPDATE kx_job SET jobstateid = 'QUEUED'"),
                NextJob("jobs are RUNNING and none is QUEUED", "UPDATE kx_job SET jobstateid = 'RUNNING'"),
                NextJob("no job is QUEUED or RUNNING", "UPDATE kx_job SET jobstateid = 'COMPLETE'"),
            }};
}

}  // namespace kxjob::testing_support

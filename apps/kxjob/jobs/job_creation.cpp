#include "jobs/job_creation.h"

#include <algorithm>
#include <cstdint>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "records/job_record.h"

namespace kxjob::command {
namespace {

/// One by one, for CreateSimpleJobItems knows no data.
void CreateItemsWithData(JobHelper& jobs, const StoreConnection& store, const NewJob& job,
                         const std::function<void(std::size_t)>& itemsDone) {
    std::int32_t sequence = 0;
    for (const NewItem& item : job.items) {
        jobs.CreateJobItem(store.connectionString, store.provider, store.nameQualifier, job.guid,
                           item.identifier, item.data.value_or(""), sequence++);
        itemsDone(static_cast<std::size_t>(sequence));
    }
}

void CreateItemsWithoutData(JobHelper& jobs, const StoreConnection& store, const NewJob& job,
                            const std::function<void(std::size_t)>& itemsDone) {
    std::vector<Value> identifiers;
    identifiers.reserve(job.items.size());
    for (const NewItem& item : job.items) identifiers.emplace_back(item.identifier);
    jobs.CreateSimpleJobItems(store.connectionString, store.provider, store.nameQualifier, job.guid,
                              Array::List(std::move(identifiers)));
    itemsDone(job.items.size());
}

void Create(const StoreConnection& store, const NewJob& job,
            const std::function<void(std::size_t)>& itemsDone) {
    JobHelper jobs;
    jobs.CreateJob(store.connectionString, store.provider, store.nameQualifier, job.guid, job.type,
                   job.description, job.applicationState, job.parameters,
                   static_cast<std::int32_t>(job.items.size()));
    const bool hasData =
        std::ranges::any_of(job.items, [](const NewItem& item) { return item.data.has_value(); });
    (hasData ? CreateItemsWithData : CreateItemsWithoutData)(jobs, store, job, itemsDone);
    if (job.leaveCreating) return;
    for (const char* state : {"READY", "QUEUED"}) {
        jobs.UpdateJobStatus(store.connectionString, store.provider, store.nameQualifier, job.guid, state);
    }
}

/// Removes what there is of the job; gives a sentence about what could not be removed.
std::string RemoveHalf(const StoreConnection& store, const std::string& guid) {
    try {
        if (ReadJobs(store, {.guid = guid}).empty()) return {};
        JobHelper().RemoveJobAndItems(store.connectionString, store.provider, store.nameQualifier, guid);
        return {};
    } catch (const AutomationError& error) {
        return " Job " + guid + " may be left half made; its removal failed: " + error.Description();
    }
}

}  // namespace

void CreateWholeJob(const StoreConnection& store, const NewJob& job,
                    const std::function<void(std::size_t)>& itemsDone) {
    // Else a failure would remove that one.
    if (!ReadJobs(store, {.guid = job.guid}).empty()) {
        throw AutomationError(error_number::kDuplicateKey, "kxjob",
                              "There is a job " + job.guid + " already");
    }
    try {
        Create(store, job, itemsDone);
    } catch (const AutomationError& error) {
        throw AutomationError(error.Number(), error.Source(),
                              error.Description() + RemoveHalf(store, job.guid), error.Line());
    }
}

}  // namespace kxjob::command

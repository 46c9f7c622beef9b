#include "insight/doctor/job_checks.h"

#include <fmt/format.h>

#include <map>

#include "insight/selection/offered_jobs.h"
#include "kxjob/automation_error.h"
#include "kxjob/component_registry.h"
#include "records/job_type_record.h"

namespace kxjob::command {
namespace {

void CheckComponent(const std::string& type, const std::string& progId, Findings& findings) {
    try {
        CreateComponent(progId);
        findings.push_back(
            {finding::kComponentThere,
             fmt::format("This machine has the component {} of the job type {}.", progId, type)});
    } catch (const AutomationError& error) {
        findings.push_back(
            {finding::kComponentMissing,
             SentenceOf(fmt::format("This machine cannot create the component {} of the job type {}: {}",
                                    progId, type, error.Description()))});
    }
}

}  // namespace

void CheckJobTypes(const StoreConnection& store, Findings& findings) {
    const std::vector<JobTypeRecord> types = ReadJobTypes(store);
    if (types.empty()) {
        findings.push_back({finding::kNoJobType, "The store has no job type: no job can be created."});
    }
    for (const JobTypeRecord& type : types) {
        CheckComponent(type.type, type.component, findings);
        if (!type.notificationComponent.empty())
            CheckComponent(type.type, type.notificationComponent, findings);
    }
    std::map<std::string, std::size_t> jobsWithoutType;
    for (const OfferedJob& job : ReadOfferedJobs(store)) {
        if (!job.hasType) ++jobsWithoutType[job.type];
    }
    for (const auto& [type, count] : jobsWithoutType) {
        findings.push_back(
            {finding::kTypeMissing,
             fmt::format("{} QUEUED or RUNNING jobs are of the type {}, which the store does not have: no "
                         "worker is given any job of this store until they are gone.",
                         count, type)});
    }
}

}  // namespace kxjob::command

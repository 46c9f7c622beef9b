#include "kxjob/array.h"
#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

constexpr const char* kNoRuntime = "DELETE FROM kx_subsystem WHERE subsystemid = 'RUNTIME'";
constexpr const char* kNoEarlierJob = "DELETE FROM kx_job";

Variant Creation(const std::string& condition, const std::vector<std::string>& before,
                 const std::string& parameters = "", int items = kAnyItemCount) {
    return {.method = "CreateJob",
            .conditions = {condition},
            .before = before,
            .call =
                [parameters, items](const VariantStore& store) {
                    store.jobs.CreateJob(store.connectionString, store.provider, store.qualifier, kNewJobGuid,
                                         kJobType, "a description", kStateGuid, parameters, items);
                },
            .raises = items == 0};
}

Variant Items(const std::string& condition, const std::vector<Value>& identifiers) {
    return {.method = "CreateSimpleJobItems",
            .conditions = {condition},
            .before = {},
            .call = [identifiers](const VariantStore& store) {
                store.jobs.CreateSimpleJobItems(store.connectionString, store.provider, store.qualifier,
                                                kJobGuid, Array::List(identifiers));
            }};
}

Variant Sweep(const std::vector<std::string>& conditions, const std::string& production,
              const std::vector<std::string>& before) {
    return {.method = "RemoveIrrelevantJobsInContainer",
            .conditions = conditions,
            .before = before,
            .call = [production](const VariantStore& store) {
                store.jobs.RemoveIrrelevantJobsInContainer(store.connectionString, store.provider,
                                                           store.qualifier, production, kDevelopmentGuid);
            }};
}

std::vector<Variant> Sweeps() {
    const std::string staying = "UPDATE kx_job SET appstateguid = NULL";
    const std::string nullGuid = "{00000000-0000-0000-0000-000000000000}";
    return {
        {.method = "RemoveIrrelevantJobsInAllContainers",
         .conditions = {"no job is left"},
         .before = {},
         .call =
             [](const VariantStore& store) {
                 store.jobs.RemoveIrrelevantJobsInAllContainers(store.connectionString, store.provider,
                                                                store.qualifier);
             }},
        Sweep({"`ProductionStateGUID` is not the null GUID", "no job is left"}, kProductionGuid, {}),
        Sweep({"`ProductionStateGUID` is not the null GUID", "jobs are left"}, kProductionGuid, {staying}),
        Sweep({"`ProductionStateGUID` is the null GUID", "jobs are left"}, nullGuid, {staying}),
        Sweep({"`ProductionStateGUID` is the null GUID", "no job is left"}, nullGuid, {}),
    };
}

}  // namespace

Family LifecycleFamily() {
    Family family{.title = "Creation and removal",
                  .methods = {"CreateJob", "CreateJobItem", "CreateSimpleJobItems", "RemoveJobAndItems",
                              "RemoveIrrelevantJobsInAllContainers", "RemoveIrrelevantJobsInContainer",
                              "RemoveOrphanedJobInformation"},
                  .variants = {
                      Creation("`TotalItemCount` is below 1", {}, "", 0),
                      Creation("the container has a RUNTIME subsystem", {kNoEarlierJob}),
                      Creation("there is no such job type", {kNoRuntime, "DELETE FROM kx_JobType"}),
                      Creation("`Parameters` is empty", {kNoEarlierJob, kNoRuntime}),
                      Creation("`Parameters` is given", {kNoEarlierJob, kNoRuntime}, "<parameters/>"),
                      Creation("there are earlier jobs", {kNoRuntime}),
                      {.method = "CreateJobItem",
                       .conditions = {},
                       .before = {},
                       .call =
                           [](const VariantStore& store) {
                               store.jobs.CreateJobItem(store.connectionString, store.provider,
                                                        store.qualifier, kJobGuid, kIdentifierGuid,
                                                        "some data", kAnySequence);
                           }},
                      Items("there are identifiers: one for each, up to 100 in a transaction",
                            {kIdentifierGuid, kOtherIdentifierGuid}),
                      Items("there are no identifiers", {}),
                      {.method = "RemoveJobAndItems",
                       .conditions = {},
                       .before = {},
                       .call =
                           [](const VariantStore& store) {
                               store.jobs.RemoveJobAndItems(store.connectionString, store.provider,
                                                            store.qualifier, kJobGuid);
                           }},
                  }};
    family.variants[2].raises = true;
    for (const Variant& sweep : Sweeps()) family.variants.push_back(sweep);
    return family;
}

}  // namespace kxjob::testing_support

#include <array>

#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

using Read = void (*)(const VariantStore& store, const std::string& key);

Variant Reading(const std::string& method, const std::vector<std::string>& conditions, const std::string& key,
                Read read) {
    return {.method = method,
            .conditions = conditions,
            .before = {},
            .call = [key, read](const VariantStore& store) { read(store, key); }};
}

/// With the argument, and without it.
std::vector<Variant> WithAndWithout(const std::string& method, const std::string& argument,
                                    const std::string& key, Read read) {
    return {Reading(method, {"`" + argument + "` is given"}, key, read),
            Reading(method, {"`" + argument + "` is empty"}, "", read)};
}

/// One for each choice of the four filters.
std::vector<Variant> JobFilters() {
    constexpr std::array<const char*, 4> kNames = {"JobGUID", "JobTypeID", "JobStateID",
                                                   "ApplicationStateGUID"};
    constexpr std::array<const char*, 4> kValues = {kJobGuid, kJobType, kAnyJobState, kStateGuid};
    std::vector<Variant> variants;
    for (unsigned choice = 0; choice < 16; ++choice) {
        std::array<std::string, 4> filters;
        std::string given;
        for (std::size_t i = 0; i < filters.size(); ++i) {
            if ((choice >> i & 1U) == 0) continue;
            filters[i] = kValues[i];
            given += (given.empty() ? "`" : ", `") + std::string(kNames[i]) + "`";
        }
        const std::string condition =
            given.empty() ? "no filter is given" : "these filters are given and no others: " + given;
        variants.push_back({.method = "GetJob",
                            .conditions = {condition},
                            .before = {},
                            .call = [filters](const VariantStore& store) {
                                store.jobs.GetJob(store.connectionString, store.provider, store.qualifier,
                                                  filters[0], filters[1], filters[2], filters[3]);
                            }});
    }
    return variants;
}

}  // namespace

Family QueryFamily() {
    Family family{
        .title = "Queries",
        .methods = {"GetJob", "GetJobType", "GetJobParameters", "GetJobItem", "GetJobItems", "GetJobTasks"},
        .variants = JobFilters()};
    Append(family.variants, WithAndWithout("GetJobType", "JobTypeID", kJobType,
                                           [](const VariantStore& store, const std::string& key) {
                                               store.jobs.GetJobType(store.connectionString, store.provider,
                                                                     store.qualifier, key);
                                           }));
    Append(family.variants,
           {Reading("GetJobParameters", {}, kJobGuid,
                    [](const VariantStore& store, const std::string& key) {
                        store.jobs.GetJobParameters(store.connectionString, store.provider, store.qualifier,
                                                    key);
                    }),
            Reading("GetJobItem", {}, kItemGuid,
                    [](const VariantStore& store, const std::string& key) {
                        store.jobs.GetJobItem(store.connectionString, store.provider, store.qualifier, key);
                    }),
            Reading("GetJobItems", {}, kJobGuid, [](const VariantStore& store, const std::string& key) {
                store.jobs.GetJobItems(store.connectionString, store.provider, store.qualifier, key);
            })});
    Append(family.variants, WithAndWithout("GetJobTasks", "JobGUID", kJobGuid,
                                           [](const VariantStore& store, const std::string& key) {
                                               store.jobs.GetJobTasks(store.connectionString, store.provider,
                                                                      store.qualifier, key);
                                           }));
    return family;
}

Family StatisticsFamily() {
    Family family{.title = "Statistics",
                  .methods = {"GetJobExecutionStatistics", "GetJobExecutionStatisticsAllowMissing",
                              "piGetJobExecutionStatistics", "GetJobItemExecutionStatistics",
                              "JobItemsAtState", "OwnersOfJobItemsAtState"},
                  .variants = WithAndWithout("GetJobExecutionStatistics", "JobGUID", kJobGuid,
                                             [](const VariantStore& store, const std::string& key) {
                                                 store.jobs.GetJobExecutionStatistics(store.connectionString,
                                                                                      store.provider,
                                                                                      store.qualifier, key);
                                             })};
    Append(family.variants, WithAndWithout("GetJobExecutionStatisticsAllowMissing", "JobGUID", kJobGuid,
                                           [](const VariantStore& store, const std::string& key) {
                                               store.jobs.GetJobExecutionStatisticsAllowMissing(
                                                   store.connectionString, store.provider, store.qualifier,
                                                   key);
                                           }));
    Append(family.variants, {Reading("GetJobItemExecutionStatistics", {}, kJobGuid,
                                     [](const VariantStore& store, const std::string& key) {
                                         store.jobs.GetJobItemExecutionStatistics(
                                             store.connectionString, store.provider, store.qualifier, key,
                                             kAnySequence);
                                     })});
    family.variants.back().before = {"UPDATE kx_JobItem SET sequence = " + std::to_string(kAnySequence)};
    Append(family.variants, WithAndWithout("JobItemsAtState", "StateId", kAnyState,
                                           [](const VariantStore& store, const std::string& key) {
                                               store.jobs.JobItemsAtState(store.connectionString,
                                                                          store.qualifier, kJobGuid, key);
                                           }));
    Append(family.variants, WithAndWithout("OwnersOfJobItemsAtState", "StateId", kAnyState,
                                           [](const VariantStore& store, const std::string& key) {
                                               store.jobs.OwnersOfJobItemsAtState(
                                                   store.connectionString, store.qualifier, kJobGuid, key);
                                           }));
    return family;
}

}  // namespace kxjob::testing_support

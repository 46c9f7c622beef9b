#include "statements/variant.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

Variant Ending(bool succeeded) {
    return {.method = "UnRegisterJobTaskIndicatingStatus",
            .conditions = {std::string("`Succeeded` is ") + (succeeded ? "True" : "False")},
            .before = {},
            .call = [succeeded](const VariantStore& store) {
                store.jobs.UnRegisterJobTaskIndicatingStatus(store.connectionString, store.qualifier,
                                                             kTaskGuid, succeeded);
            }};
}

Variant Update(const std::string& condition, const std::string& item, const std::string& state) {
    return {.method = "UpdateTaskRegistration",
            .conditions = {condition},
            .before = {},
            .call =
                [item, state](const VariantStore& store) {
                    store.jobs.UpdateTaskRegistration(store.connectionString, store.qualifier, kTaskGuid,
                                                      item, state);
                },
            .raises = item.empty() && state.empty()};
}

Variant NewLock(const std::string& condition, const std::vector<std::string>& before) {
    return {.method = "GetNewLockExcludingInterlopers",
            .conditions = {condition},
            .before = before,
            .call =
                [](const VariantStore& store) {
                    store.jobs.GetNewLockExcludingInterlopers(store.connectionString, store.qualifier,
                                                              kJobGuid, kTaskGuid, kLockGuid, 90.5);
                },
            .raises = !before.empty()};
}

}  // namespace

Family TaskFamily() {
    return {.title = "Tasks and the editor lock",
            .methods = {"RegisterJobTask", "UnRegisterJobTask", "UnRegisterJobTaskIndicatingStatus",
                        "UpdateTaskRegistration", "UpdateJobTaskLock", "UpdateTaskCommand",
                        "GetNewLockExcludingInterlopers"},
            .variants = {
                {.method = "RegisterJobTask",
                 .conditions = {},
                 .before = {},
                 .call =
                     [](const VariantStore& store) {
                         store.jobs.RegisterJobTask(store.connectionString, store.qualifier, "a description",
                                                    kJobGuid, "a user", "a machine", kAnyProcess, kAnyThread);
                     }},
                {.method = "UnRegisterJobTask",
                 .conditions = {},
                 .before = {},
                 .call =
                     [](const VariantStore& store) {
                         store.jobs.UnRegisterJobTask(store.connectionString, store.qualifier, kTaskGuid);
                     }},
                Ending(true),
                Ending(false),
                Update("`LastJobItem` and `JobTaskStateID` are given", kItemGuid, kAnyTaskState),
                Update("`JobTaskStateID` is empty", kItemGuid, ""),
                Update("`LastJobItem` is empty", "", kAnyTaskState),
                Update("both are empty", "", ""),
                {.method = "UpdateJobTaskLock",
                 .conditions = {},
                 .before = {},
                 .call =
                     [](const VariantStore& store) {
                         store.jobs.UpdateJobTaskLock(store.connectionString, store.qualifier, kTaskGuid,
                                                      kOtherLockGuid);
                     }},
                {.method = "UpdateTaskCommand",
                 .conditions = {},
                 .before = {},
                 .call =
                     [](const VariantStore& store) {
                         store.jobs.UpdateTaskCommand(store.connectionString, store.qualifier, kTaskGuid,
                                                      "a command");
                     }},
                NewLock("the job holds `OldLockGUID`", {}),
                NewLock("the job holds another lock", {"UPDATE kx_job SET jobeditorlockguid = 'another'"}),
                NewLock("the job is gone", {"DELETE FROM kx_job"}),
            }};
}

}  // namespace kxjob::testing_support

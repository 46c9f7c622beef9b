#include "support/every_method.h"

#include "kxjob/array.h"
#include "kxjob/collection.h"
#include "kxjob/duration_timer.h"

namespace kxjob::testing_support {
namespace {

using Text = const std::string&;

std::vector<MethodCall> Vocabulary() {
    return {
        {"Version", false, [](JobHelper& helper, Text, DataStoreProvider, Text) { helper.Version(); }},
        {"IsJobComplete", false,
         [](JobHelper& helper, Text, DataStoreProvider, Text) { helper.IsJobComplete("COMPLETE"); }},
        {"IsJobRunning", false,
         [](JobHelper& helper, Text, DataStoreProvider, Text) { helper.IsJobRunning("RUNNING"); }},
        {"ParametersTagName", false,
         [](JobHelper& helper, Text, DataStoreProvider, Text) { helper.ParametersTagName(); }},
        {"ParameterTagName", false,
         [](JobHelper& helper, Text, DataStoreProvider, Text) { helper.ParameterTagName(); }},
        {"JobTableCreationScript", false,
         [](JobHelper& helper, Text, DataStoreProvider provider, Text qualifier) {
             Collection options;
             helper.JobTableCreationScript(options, provider, qualifier);
         }},
    };
}

std::vector<MethodCall> Tasks() {
    return {
        {"RegisterJobTask", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.RegisterJobTask(connection, qualifier, "a task", kJobGuid, "a user", "a machine", 71, 72);
         }},
        {"UnRegisterJobTask", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.UnRegisterJobTask(connection, qualifier, kTaskGuid);
         }},
        {"UnRegisterJobTaskIndicatingStatus", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.UnRegisterJobTaskIndicatingStatus(connection, qualifier, kTaskGuid, false);
         }},
        {"UpdateTaskRegistration", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.UpdateTaskRegistration(connection, qualifier, kTaskGuid, kItemGuid, "RUNNING");
         }},
        {"UpdateJobTaskLock", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.UpdateJobTaskLock(connection, qualifier, kTaskGuid, kOtherLockGuid);
         }},
        {"UpdateTaskCommand", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.UpdateTaskCommand(connection, qualifier, kTaskGuid, "STOP");
         }},
        {"GetNewLockExcludingInterlopers", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.GetNewLockExcludingInterlopers(connection, qualifier, kJobGuid, kTaskGuid, kLockGuid,
                                                   90.5);
         }},
    };
}

std::vector<MethodCall> Lifecycle() {
    return {
        {"CreateJob", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.CreateJob(connection, provider, qualifier, kNewJobGuid, kJobType, "a job", kStateGuid,
                              "<parameters/>", 3);
         }},
        {"CreateJobItem", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.CreateJobItem(connection, provider, qualifier, kJobGuid, kIdentifierGuid, "some data", 4);
         }},
        {"CreateSimpleJobItems", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.CreateSimpleJobItems(connection, provider, qualifier, kJobGuid,
                                         Array::List({kIdentifierGuid, kOtherIdentifierGuid}));
         }},
        {"RemoveJobAndItems", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.RemoveJobAndItems(connection, provider, qualifier, kJobGuid);
         }},
        {"RemoveIrrelevantJobsInAllContainers", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.RemoveIrrelevantJobsInAllContainers(connection, provider, qualifier);
         }},
        {"RemoveIrrelevantJobsInContainer", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.RemoveIrrelevantJobsInContainer(connection, provider, qualifier, kProductionGuid,
                                                    kDevelopmentGuid);
         }},
    };
}

std::vector<MethodCall> Queries() {
    return {
        {"GetJob", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJob(connection, provider, qualifier, kJobGuid, kJobType, "RUNNING", kStateGuid);
         }},
        {"GetJobType", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobType(connection, provider, qualifier, kJobType);
         }},
        {"GetJobParameters", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobParameters(connection, provider, qualifier, kJobGuid);
         }},
        {"GetJobItem", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobItem(connection, provider, qualifier, kItemGuid);
         }},
        {"GetJobItems", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobItems(connection, provider, qualifier, kJobGuid);
         }},
        {"GetJobTasks", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobTasks(connection, provider, qualifier, kJobGuid);
         }},
    };
}

std::vector<MethodCall> Statistics() {
    return {
        {"GetJobExecutionStatistics", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobExecutionStatistics(connection, provider, qualifier, kJobGuid);
         }},
        {"GetJobExecutionStatisticsAllowMissing", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobExecutionStatisticsAllowMissing(connection, provider, qualifier, kJobGuid);
         }},
        {"GetJobItemExecutionStatistics", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.GetJobItemExecutionStatistics(connection, provider, qualifier, kJobGuid, 0);
         }},
        {"JobItemsAtState", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.JobItemsAtState(connection, qualifier, kJobGuid, "COMPLETE");
         }},
        {"OwnersOfJobItemsAtState", false,
         [](JobHelper& helper, Text connection, DataStoreProvider, Text qualifier) {
             helper.OwnersOfJobItemsAtState(connection, qualifier, kJobGuid, "COMPLETE");
         }},
    };
}

std::vector<MethodCall> StatusAndScheduling() {
    return {
        {"UpdateJobStatus", true,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.UpdateJobStatus(connection, provider, qualifier, kJobGuid, "RUNNING");
         }},
        {"UpdateJobItemStatus", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.UpdateJobItemStatus(connection, provider, qualifier, kItemGuid, "COMPLETE",
                                        "2026-03-01T09:30:15.123Z", "2026-03-01T09:31:00.000Z", kTaskGuid);
         }},
        {"AppendJobFailureNote", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.AppendJobFailureNote(connection, provider, qualifier, kJobGuid, "a note");
         }},
        {"AppendJobItemFailureNote", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             helper.AppendJobItemFailureNote(connection, provider, qualifier, kItemGuid, "a note");
         }},
        {"GetNextJob", false,
         [](JobHelper& helper, Text connection, DataStoreProvider provider, Text qualifier) {
             std::string jobGuid;
             double rank = 0;
             helper.GetNextJob(connection, provider, qualifier, jobGuid, rank);
         }},
    };
}

}  // namespace

const std::vector<MethodCall>& EveryMethod() {
    static const std::vector<MethodCall> all = [] {
        std::vector<MethodCall> methods;
        for (const std::vector<MethodCall>& family :
             {Vocabulary(), Tasks(), Lifecycle(), Queries(), Statistics(), StatusAndScheduling()}) {
            methods.insert(methods.end(), family.begin(), family.end());
        }
        return methods;
    }();
    return all;
}

const std::vector<TimerCall>& EveryTimerMember() {
    static const std::vector<TimerCall> all{
        {"Class_Initialize", [] { const DurationTimer timer; }},
        {"Start",
         [] {
             DurationTimer timer;
             timer.Start();
         }},
        {"Duration",
         [] {
             const DurationTimer timer;
             static_cast<void>(timer.Duration());
         }},
    };
    return all;
}

}  // namespace kxjob::testing_support

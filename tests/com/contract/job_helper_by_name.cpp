// The methods of JobHelper as the registered server does them, called by name: what is written against the
// published class runs through the server in a program that has this file instead of the library's bodies.
#include <gtest/gtest.h>

#include <span>
#include <vector>

#include "com/platform/com_platform.h"
#include "com/support/script_call.h"
#include "com/values/value_of_variant.h"
#include "com/values/variant_of_value.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"

namespace kxjob {
namespace {

constexpr const char* kProgId = "Job_83.JobHelper";

template <typename... Arguments>
Value Call(const char* method, const Arguments&... arguments) {
    const std::vector<Value> values{Value(arguments)...};
    return ComPlatform().CreateObject(kProgId)->Call(method, values);
}

template <typename... Arguments>
std::string Text(const char* method, const Arguments&... arguments) {
    return Call(method, arguments...).Text();
}

/// Empty, or an array by column and row, which is what the server gives for rows.
template <typename... Arguments>
Value Rows(const char* method, const Arguments&... arguments) {
    const Value answer = Call(method, arguments...);
    if (answer.IsEmpty()) return {};
    const std::span<const Array::Dimension> dimensions = answer.General().Dimensions();
    RowArray rows(dimensions[0].count);
    for (std::int32_t row = 0; row < dimensions[1].count; ++row) {
        for (std::int32_t column = 0; column < dimensions[0].count; ++column) {
            rows.AddCell(answer.General().At(std::vector{column, row}));
        }
    }
    return rows;
}

}  // namespace

JobHelper::JobHelper() = default;
JobHelper::~JobHelper() = default;

// Vocabulary -------------------------------------------------------------------------------------------

std::string JobHelper::Version() {
    return Text("Version");
}

bool JobHelper::IsJobComplete(std::string StateId) {
    return Call("IsJobComplete", StateId) == Value(true);
}

bool JobHelper::IsJobRunning(std::string StateId) {
    return Call("IsJobRunning", StateId) == Value(true);
}

std::string JobHelper::ParametersTagName() {
    return Text("ParametersTagName");
}

std::string JobHelper::ParameterTagName() {
    return Text("ParameterTagName");
}

// Store ------------------------------------------------------------------------------------------------

std::string JobHelper::JobTableCreationScript(Collection& providerOptions, DataStoreProvider Provider,
                                              std::string NameQualifier) {
    const ComponentRef lent(&providerOptions, [](Component* /*the caller's*/) {});
    return Text("JobTableCreationScript", lent, Provider, NameQualifier);
}

// Job tasks --------------------------------------------------------------------------------------------

std::string JobHelper::RegisterJobTask(Value ConnectionString, std::string NameQualifier, Value Description,
                                       std::string JobGUID, Value User, Value MachineName, std::int32_t PID,
                                       std::int32_t ThreadID) {
    return Text("RegisterJobTask", ConnectionString, NameQualifier, Description, JobGUID, User, MachineName,
                PID, ThreadID);
}

void JobHelper::UnRegisterJobTask(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobTaskGUID) {
    Call("UnRegisterJobTask", ConnectionString, NameQualifier, JobTaskGUID);
}

void JobHelper::UnRegisterJobTaskIndicatingStatus(std::string ConnectionString, std::string NameQualifier,
                                                  std::string JobTaskGUID, bool Succeeded) {
    Call("UnRegisterJobTaskIndicatingStatus", ConnectionString, NameQualifier, JobTaskGUID, Succeeded);
}

void JobHelper::UpdateTaskRegistration(std::string ConnectionString, std::string NameQualifier,
                                       std::string JobTaskGUID, std::string LastJobItem,
                                       std::string JobTaskStateID) {
    Call("UpdateTaskRegistration", ConnectionString, NameQualifier, JobTaskGUID, LastJobItem, JobTaskStateID);
}

void JobHelper::UpdateJobTaskLock(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobTaskGUID, std::string LockGUID) {
    Call("UpdateJobTaskLock", ConnectionString, NameQualifier, JobTaskGUID, LockGUID);
}

void JobHelper::UpdateTaskCommand(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobTaskGUID, std::string Command) {
    Call("UpdateTaskCommand", ConnectionString, NameQualifier, JobTaskGUID, Command);
}

std::string JobHelper::GetNewLockExcludingInterlopers(std::string ConnectionString, std::string NameQualifier,
                                                      std::string JobGUID, std::string JobTaskGUID,
                                                      std::string OldLockGUID, double NewLockDuration) {
    return Text("GetNewLockExcludingInterlopers", ConnectionString, NameQualifier, JobGUID, JobTaskGUID,
                OldLockGUID, NewLockDuration);
}

// Job lifecycle ----------------------------------------------------------------------------------------

void JobHelper::CreateJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                          std::string GUID, std::string JobTypeID, std::string Description,
                          std::string ApplicationStateGUID, std::string Parameters,
                          std::int32_t TotalItemCount) {
    Call("CreateJob", ConnectionString, Provider, NameQualifier, GUID, JobTypeID, Description,
         ApplicationStateGUID, Parameters, TotalItemCount);
}

std::string JobHelper::CreateJobItem(std::string ConnectionString, DataStoreProvider Provider,
                                     std::string NameQualifier, std::string JobGUID,
                                     std::string IdentifierGUID, std::string Data, std::int32_t Sequence) {
    return Text("CreateJobItem", ConnectionString, Provider, NameQualifier, JobGUID, IdentifierGUID, Data,
                Sequence);
}

void JobHelper::CreateSimpleJobItems(std::string ConnectionString, DataStoreProvider Provider,
                                     std::string NameQualifier, std::string JobGUID, Value IdentifierGUIDs) {
    Call("CreateSimpleJobItems", ConnectionString, Provider, NameQualifier, JobGUID, IdentifierGUIDs);
}

void JobHelper::RemoveJobAndItems(std::string ConnectionString, DataStoreProvider Provider,
                                  std::string NameQualfier, std::string JobGUID) {
    Call("RemoveJobAndItems", ConnectionString, Provider, NameQualfier, JobGUID);
}

void JobHelper::RemoveIrrelevantJobsInAllContainers(std::string ConnectionString, DataStoreProvider Provider,
                                                    std::string NameQualifier) {
    Call("RemoveIrrelevantJobsInAllContainers", ConnectionString, Provider, NameQualifier);
}

void JobHelper::RemoveIrrelevantJobsInContainer(std::string ConnectionString, DataStoreProvider Provider,
                                                std::string NameQualifier, std::string ProductionStateGUID,
                                                std::string DevelopmentStateGUID) {
    Call("RemoveIrrelevantJobsInContainer", ConnectionString, Provider, NameQualifier, ProductionStateGUID,
         DevelopmentStateGUID);
}

// Queries ----------------------------------------------------------------------------------------------

Value JobHelper::GetJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                        std::string JobGUID, std::string JobTypeID, std::string JobStateID,
                        const std::string& ApplicationStateGUID) {
    return Rows("GetJob", ConnectionString, Provider, NameQualifier, JobGUID, JobTypeID, JobStateID,
                ApplicationStateGUID);
}

Value JobHelper::GetJobType(std::string ConnectionString, DataStoreProvider Provider,
                            std::string NameQualifier, std::string JobTypeID) {
    return Rows("GetJobType", ConnectionString, Provider, NameQualifier, JobTypeID);
}

std::string JobHelper::GetJobParameters(std::string ConnectionString, DataStoreProvider Provider,
                                        std::string NameQualifier, std::string JobGUID) {
    return Text("GetJobParameters", ConnectionString, Provider, NameQualifier, JobGUID);
}

Value JobHelper::GetJobItem(std::string ConnectionString, DataStoreProvider Provider,
                            std::string NameQualifier, std::string JobItemGUID) {
    return Rows("GetJobItem", ConnectionString, Provider, NameQualifier, JobItemGUID);
}

Value JobHelper::GetJobItems(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualifier, std::string JobGUID) {
    return Rows("GetJobItems", ConnectionString, Provider, NameQualifier, JobGUID);
}

Value JobHelper::GetJobTasks(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualifier, std::string JobGUID) {
    return Rows("GetJobTasks", ConnectionString, Provider, NameQualifier, JobGUID);
}

// Statistics -------------------------------------------------------------------------------------------

Value JobHelper::GetJobExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                           std::string NameQualifier, std::string JobGUID) {
    return Rows("GetJobExecutionStatistics", ConnectionString, Provider, NameQualifier, JobGUID);
}

Value JobHelper::GetJobExecutionStatisticsAllowMissing(std::string ConnectionString,
                                                       DataStoreProvider Provider, std::string NameQualifier,
                                                       std::string JobGUID) {
    return Rows("GetJobExecutionStatisticsAllowMissing", ConnectionString, Provider, NameQualifier, JobGUID);
}

Value JobHelper::GetJobItemExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                               std::string NameQualifier, std::string JobGUID,
                                               std::int32_t SequenceNumber) {
    return Rows("GetJobItemExecutionStatistics", ConnectionString, Provider, NameQualifier, JobGUID,
                SequenceNumber);
}

Value JobHelper::JobItemsAtState(std::string ConnectionString, std::string NameQualifier, std::string JobGUID,
                                 std::string StateId) {
    return Rows("JobItemsAtState", ConnectionString, NameQualifier, JobGUID, StateId);
}

Value JobHelper::OwnersOfJobItemsAtState(std::string ConnectionString, std::string NameQualifier,
                                         std::string JobGUID, std::string StateId) {
    return Rows("OwnersOfJobItemsAtState", ConnectionString, NameQualifier, JobGUID, StateId);
}

// Status, failure notes, scheduling --------------------------------------------------------------------

void JobHelper::UpdateJobStatus(std::string ConnectionString, DataStoreProvider Provider,
                                std::string NameQualfier, std::string JobGUID, std::string JobStateID) {
    Call("UpdateJobStatus", ConnectionString, Provider, NameQualfier, JobGUID, JobStateID);
}

void JobHelper::UpdateJobItemStatus(std::string ConnectionString, DataStoreProvider Provider,
                                    std::string NameQualfier, std::string JobItemGUID,
                                    std::string JobItemStateID, std::string StartISODateTime,
                                    std::string EndISODateTime, std::string JobTaskGUID) {
    Call("UpdateJobItemStatus", ConnectionString, Provider, NameQualfier, JobItemGUID, JobItemStateID,
         StartISODateTime, EndISODateTime, JobTaskGUID);
}

void JobHelper::AppendJobFailureNote(std::string ConnectionString, DataStoreProvider Provider,
                                     std::string NameQualfier, std::string JobGUID,
                                     std::string AdditionalNote) {
    Call("AppendJobFailureNote", ConnectionString, Provider, NameQualfier, JobGUID, AdditionalNote);
}

void JobHelper::AppendJobItemFailureNote(std::string ConnectionString, DataStoreProvider Provider,
                                         std::string NameQualfier, std::string JobItemGUID,
                                         std::string AdditionalNote) {
    Call("AppendJobItemFailureNote", ConnectionString, Provider, NameQualfier, JobItemGUID, AdditionalNote);
}

void JobHelper::GetNextJob(std::string ConnectionString, DataStoreProvider Provider,
                           std::string NameQualifier, std::string& JobGUID, double& JobRank) {
    Variant job = VariantOf(Value(JobGUID));
    Variant rank = VariantOf(Value(JobRank));
    const testing_support::Outcome outcome =
        testing_support::CallByName(*testing_support::NewObject(L"Job_83.JobHelper").Get(), L"GetNextJob",
                                    {testing_support::Text(ConnectionString),
                                     testing_support::Number(Provider), testing_support::Text(NameQualifier),
                                     testing_support::Reference(*job), testing_support::Reference(*rank)});
    if (outcome.status == DISP_E_EXCEPTION) {
        throw AutomationError(outcome.number, outcome.source, outcome.description);
    }
    EXPECT_EQ(outcome.status, S_OK);
    JobGUID = ValueOf(*job).Text();
    JobRank = ValueOf(*rank).ToDouble();
}

}  // namespace kxjob

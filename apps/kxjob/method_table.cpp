#include "method_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

#include "argument_kinds.h"
#include "kxjob/collection.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

template <typename T>
void ReadGiven(const GivenArguments& given, const MethodArgument& argument, T& variable) {
    const auto found = given.find(argument.name);
    if (found == given.end()) {
        if (argument.isRequired) throw UsageError("The argument --" + argument.name + " is missing.");
        return;
    }
    try {
        ReadArgument(found->second, variable);
    } catch (const UsageError& error) {
        throw UsageError("The value of --" + argument.name + " is wrong: " + error.what());
    }
}

Json Shown(const std::string& text) {
    return text;
}
Json Shown(double number) {
    return number;
}
Json Shown(bool boolean) {
    return boolean;
}
Json Shown(const Value& value) {
    return ToJson(value);
}
Json Shown(const Collection& collection) {
    return {{"object", collection.Name()}};
}

template <typename Variable>
void AddIfByReference(Json& answer, const MethodArgument& argument, const Variable& variable) {
    if constexpr (requires { Shown(variable); }) {
        if (argument.isByReference) answer[argument.name] = Shown(variable);
    }
}

/// A method by its published names; the last `optionalCount` arguments may be left out, and so may those by
/// reference, which then start empty.
template <typename Result, typename... Parameters>
Method Describe(const char* name, Result (JobHelper::*member)(Parameters...),
                std::array<const char*, sizeof...(Parameters)> names, std::size_t optionalCount = 0) {
    using Variables = std::tuple<std::remove_cvref_t<Parameters>...>;
    std::vector<MethodArgument> arguments;
    [[maybe_unused]] const auto describe = [&]<typename Parameter>(std::type_identity<Parameter>) {
        const std::size_t place = arguments.size();
        constexpr bool kIsByReference = std::is_reference_v<Parameter>;
        arguments.push_back({names.at(place), kKindName<std::remove_cvref_t<Parameter>>,
                             !kIsByReference && place + optionalCount < names.size(), kIsByReference});
    };
    (describe(std::type_identity<Parameters>()), ...);

    const auto prepare = [member, arguments](const GivenArguments& given) -> PreparedCall {
        const auto variables = std::make_shared<Variables>();
        std::apply(
            [&](auto&... variable) {
                [[maybe_unused]] std::size_t place = 0;
                (ReadGiven(given, arguments[place++], variable), ...);
            },
            *variables);
        return [member, arguments, variables](JobHelper& helper) {
            return std::apply(
                [&](auto&... variable) {
                    Json answer = Json::object();
                    if constexpr (std::is_void_v<Result>) {
                        (helper.*member)(variable...);
                    } else {
                        answer["result"] = Shown((helper.*member)(variable...));
                    }
                    [[maybe_unused]] std::size_t place = 0;
                    (AddIfByReference(answer, arguments[place++], variable), ...);
                    return answer;
                },
                *variables);
        };
    };
    return {name, std::move(arguments), prepare};
}

const std::vector<Method>& Table() {
    static const std::vector<Method> table{
        Describe("Version", &JobHelper::Version, {}),
        Describe("IsJobComplete", &JobHelper::IsJobComplete, {"StateId"}),
        Describe("IsJobRunning", &JobHelper::IsJobRunning, {"StateId"}),
        Describe("ParametersTagName", &JobHelper::ParametersTagName, {}),
        Describe("ParameterTagName", &JobHelper::ParameterTagName, {}),
        Describe("JobTableCreationScript", &JobHelper::JobTableCreationScript,
                 {"providerOptions", "Provider", "NameQualifier"}),
        Describe("RegisterJobTask", &JobHelper::RegisterJobTask,
                 {"ConnectionString", "NameQualifier", "Description", "JobGUID", "User", "MachineName", "PID",
                  "ThreadID"}),
        Describe("UnRegisterJobTask", &JobHelper::UnRegisterJobTask,
                 {"ConnectionString", "NameQualifier", "JobTaskGUID"}),
        Describe("UnRegisterJobTaskIndicatingStatus", &JobHelper::UnRegisterJobTaskIndicatingStatus,
                 {"ConnectionString", "NameQualifier", "JobTaskGUID", "Succeeded"}),
        Describe("UpdateTaskRegistration", &JobHelper::UpdateTaskRegistration,
                 {"ConnectionString", "NameQualifier", "JobTaskGUID", "LastJobItem", "JobTaskStateID"}),
        Describe("UpdateJobTaskLock", &JobHelper::UpdateJobTaskLock,
                 {"ConnectionString", "NameQualifier", "JobTaskGUID", "LockGUID"}),
        Describe("UpdateTaskCommand", &JobHelper::UpdateTaskCommand,
                 {"ConnectionString", "NameQualifier", "JobTaskGUID", "Command"}),
        Describe("GetNewLockExcludingInterlopers", &JobHelper::GetNewLockExcludingInterlopers,
                 {"ConnectionString", "NameQualifier", "JobGUID", "JobTaskGUID", "OldLockGUID",
                  "NewLockDuration"}),
        Describe("CreateJob", &JobHelper::CreateJob,
                 {"ConnectionString", "Provider", "NameQualifier", "GUID", "JobTypeID", "Description",
                  "ApplicationStateGUID", "Parameters", "TotalItemCount"}),
        Describe("CreateJobItem", &JobHelper::CreateJobItem,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "IdentifierGUID", "Data",
                  "Sequence"}),
        Describe("CreateSimpleJobItems", &JobHelper::CreateSimpleJobItems,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "IdentifierGUIDs"}),
        Describe("RemoveJobAndItems", &JobHelper::RemoveJobAndItems,
                 {"ConnectionString", "Provider", "NameQualfier", "JobGUID"}),
        Describe("RemoveIrrelevantJobsInAllContainers", &JobHelper::RemoveIrrelevantJobsInAllContainers,
                 {"ConnectionString", "Provider", "NameQualifier"}),
        Describe(
            "RemoveIrrelevantJobsInContainer", &JobHelper::RemoveIrrelevantJobsInContainer,
            {"ConnectionString", "Provider", "NameQualifier", "ProductionStateGUID", "DevelopmentStateGUID"}),
        Describe("GetJob", &JobHelper::GetJob,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "JobTypeID", "JobStateID",
                  "ApplicationStateGUID"},
                 4),
        Describe("GetJobType", &JobHelper::GetJobType,
                 {"ConnectionString", "Provider", "NameQualifier", "JobTypeID"}, 1),
        Describe("GetJobParameters", &JobHelper::GetJobParameters,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}),
        Describe("GetJobItem", &JobHelper::GetJobItem,
                 {"ConnectionString", "Provider", "NameQualifier", "JobItemGUID"}),
        Describe("GetJobItems", &JobHelper::GetJobItems,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}),
        Describe("GetJobTasks", &JobHelper::GetJobTasks,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}, 1),
        Describe("GetJobExecutionStatistics", &JobHelper::GetJobExecutionStatistics,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}, 1),
        Describe("GetJobExecutionStatisticsAllowMissing", &JobHelper::GetJobExecutionStatisticsAllowMissing,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}),
        Describe("GetJobItemExecutionStatistics", &JobHelper::GetJobItemExecutionStatistics,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "SequenceNumber"}),
        Describe("JobItemsAtState", &JobHelper::JobItemsAtState,
                 {"ConnectionString", "NameQualifier", "JobGUID", "StateId"}, 1),
        Describe("OwnersOfJobItemsAtState", &JobHelper::OwnersOfJobItemsAtState,
                 {"ConnectionString", "NameQualifier", "JobGUID", "StateId"}, 1),
        Describe("UpdateJobStatus", &JobHelper::UpdateJobStatus,
                 {"ConnectionString", "Provider", "NameQualfier", "JobGUID", "JobStateID"}),
        Describe("UpdateJobItemStatus", &JobHelper::UpdateJobItemStatus,
                 {"ConnectionString", "Provider", "NameQualfier", "JobItemGUID", "JobItemStateID",
                  "StartISODateTime", "EndISODateTime", "JobTaskGUID"}),
        Describe("AppendJobFailureNote", &JobHelper::AppendJobFailureNote,
                 {"ConnectionString", "Provider", "NameQualfier", "JobGUID", "AdditionalNote"}),
        Describe("AppendJobItemFailureNote", &JobHelper::AppendJobItemFailureNote,
                 {"ConnectionString", "Provider", "NameQualfier", "JobItemGUID", "AdditionalNote"}),
        Describe("GetNextJob", &JobHelper::GetNextJob,
                 {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "JobRank"}),
    };
    return table;
}

}  // namespace

std::span<const Method> Methods() {
    return Table();
}

const Method* FindMethod(std::string_view name) {
    const std::vector<Method>& table = Table();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Method& method) { return method.name == name; });
    return found == table.end() ? nullptr : &*found;
}

}  // namespace kxjob::command

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "collaborators/this_thread.h"
#include "frame/factory_over_fixture.h"
#include "support/every_method.h"
#include "support/faulty_world.h"

namespace kxjob {
namespace {

using testing_support::FaultyRun;
using Names = std::vector<std::string>;

/// The names of the arguments of each method that was entered, "&" behind one that the caller sees changed.
class NameKeeper : public MethodObserver {
public:
    explicit NameKeeper(std::map<std::string, Names>& kept) : kept_(kept) {}

    void Enter(std::string_view /*className*/, std::string_view method, Arguments arguments) override {
        Names names;
        for (const Argument& argument : arguments) {
            names.emplace_back(std::string(argument.Name()) + (argument.IsByReference() ? "&" : ""));
        }
        kept_[std::string(method)] = names;
    }
    void At(std::int32_t /*line*/) override {}
    void Leave(std::string_view /*method*/, const Value* /*result*/, Arguments /*arguments*/) override {}
    void Raise(std::string_view /*method*/, const AutomationError& /*error*/) override {}

private:
    std::map<std::string, Names>& kept_;
};

class NameKeepingFactory : public testing_support::FactoryOverFixture {
public:
    NameKeepingFactory(std::shared_ptr<CollaboratorFactory> inner, std::map<std::string, Names>& kept)
        : FactoryOverFixture(std::move(inner)), kept_(kept) {}

    std::shared_ptr<MethodObserver> MakeMethodObserver() override {
        return std::make_shared<NameKeeper>(kept_);
    }

private:
    std::map<std::string, Names>& kept_;
};

const std::map<std::string, Names>& PublishedNames() {
    static const std::map<std::string, Names> names = {
        {"Version", {}},
        {"IsJobComplete", {"StateId"}},
        {"IsJobRunning", {"StateId"}},
        {"ParametersTagName", {}},
        {"ParameterTagName", {}},
        {"JobTableCreationScript", {"providerOptions&", "Provider", "NameQualifier"}},
        {"RegisterJobTask",
         {"ConnectionString", "NameQualifier", "Description", "JobGUID", "User", "MachineName", "PID",
          "ThreadID"}},
        {"UnRegisterJobTask", {"ConnectionString", "NameQualifier", "JobTaskGUID"}},
        {"UnRegisterJobTaskIndicatingStatus",
         {"ConnectionString", "NameQualifier", "JobTaskGUID", "Succeeded"}},
        {"UpdateTaskRegistration",
         {"ConnectionString", "NameQualifier", "JobTaskGUID", "LastJobItem", "JobTaskStateID"}},
        {"UpdateJobTaskLock", {"ConnectionString", "NameQualifier", "JobTaskGUID", "LockGUID"}},
        {"UpdateTaskCommand", {"ConnectionString", "NameQualifier", "JobTaskGUID", "Command"}},
        {"GetNewLockExcludingInterlopers",
         {"ConnectionString", "NameQualifier", "JobGUID", "JobTaskGUID", "OldLockGUID", "NewLockDuration"}},
        {"CreateJob",
         {"ConnectionString", "Provider", "NameQualifier", "GUID", "JobTypeID", "Description",
          "ApplicationStateGUID", "Parameters", "TotalItemCount"}},
        {"CreateJobItem",
         {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "IdentifierGUID", "Data", "Sequence"}},
        {"CreateSimpleJobItems",
         {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "IdentifierGUIDs"}},
        {"RemoveJobAndItems", {"ConnectionString", "Provider", "NameQualfier", "JobGUID"}},
        {"RemoveIrrelevantJobsInAllContainers", {"ConnectionString", "Provider", "NameQualifier"}},
        {"RemoveIrrelevantJobsInContainer",
         {"ConnectionString", "Provider", "NameQualifier", "ProductionStateGUID", "DevelopmentStateGUID"}},
        {"GetJob",
         {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "JobTypeID", "JobStateID",
          "ApplicationStateGUID&"}},
        {"GetJobType", {"ConnectionString", "Provider", "NameQualifier", "JobTypeID"}},
        {"GetJobParameters", {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}},
        {"GetJobItem", {"ConnectionString", "Provider", "NameQualifier", "JobItemGUID"}},
        {"GetJobItems", {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}},
        {"GetJobTasks", {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}},
        {"GetJobExecutionStatistics", {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}},
        {"GetJobExecutionStatisticsAllowMissing",
         {"ConnectionString", "Provider", "NameQualifier", "JobGUID"}},
        {"GetJobItemExecutionStatistics",
         {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "SequenceNumber"}},
        {"JobItemsAtState", {"ConnectionString", "NameQualifier", "JobGUID", "StateId"}},
        {"OwnersOfJobItemsAtState", {"ConnectionString", "NameQualifier", "JobGUID", "StateId"}},
        {"UpdateJobStatus", {"ConnectionString", "Provider", "NameQualfier", "JobGUID", "JobStateID"}},
        {"UpdateJobItemStatus",
         {"ConnectionString", "Provider", "NameQualfier", "JobItemGUID", "JobItemStateID", "StartISODateTime",
          "EndISODateTime", "JobTaskGUID"}},
        {"AppendJobFailureNote",
         {"ConnectionString", "Provider", "NameQualfier", "JobGUID", "AdditionalNote"}},
        {"AppendJobItemFailureNote",
         {"ConnectionString", "Provider", "NameQualfier", "JobItemGUID", "AdditionalNote"}},
        {"GetNextJob", {"ConnectionString", "Provider", "NameQualifier", "JobGUID&", "JobRank&"}},
        // And those that only these run.
        {"RMConnectionDocument", {}},
        {"piAdminHistoryWrite", {"ConnectionString", "Provider", "NameQualifier", "ActionCode", "Detail"}},
        {"piGetJobExecutionStatistics",
         {"ConnectionString", "Provider", "NameQualifier", "JobGUID", "AllowMissing"}},
        {"RemoveOrphanedJobInformation", {"ConnectionString", "Provider", "NameQualifier"}},
        {"LowImpactGetNextJob", {"ConnectionString", "Provider", "NameQualifier", "JobGUID&", "JobRank&"}},
        {"GetQueuedAndRunningJobs",
         {"ConnectionString", "Provider", "NameQualifier", "QueuedJobs&", "RunningJobs&"}},
        {"GetJobTypeProgIDs", {"ConnectionString", "Provider", "NameQualifier"}},
        {"GetHighestRankingRunningJobs",
         {"ConnectionString", "Provider", "NameQualifier", "RunningJobs&", "Candidates&", "Rank&"}},
    };
    return names;
}

TEST(ArgumentNames, AreThePublishedOnesInTheirOrder) {
    std::map<std::string, Names> kept;
    for (const testing_support::StoredJobs jobs :
         {testing_support::StoredJobs::QueuedAndRunning, testing_support::StoredJobs::RunningOnly}) {
        for (const bool isGiven : {true, false}) {
            for (const testing_support::MethodCall& method : testing_support::EveryMethod()) {
                if (!isGiven && !method.hasConfigurationFallback) continue;
                FaultyRun run;
                run.storedJobs = jobs;
                InstallCollaborators(
                    std::make_shared<NameKeepingFactory>(testing_support::MakeFaultyWorld(run), kept));
                JobHelper helper;
                method.call(helper, isGiven ? "given" : "", 5, "kx_");
                InstallCollaborators(nullptr);
            }
        }
    }
    EXPECT_EQ(kept, PublishedNames());
}

}  // namespace
}  // namespace kxjob

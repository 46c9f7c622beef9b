#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "kxjob/collection.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/enums.h"
#include "kxjob/export.h"
#include "kxjob/value.h"

namespace kxjob {

class ConnectionSettings;
class Frame;
class KeyedCollection;

/// Functions to work with Jobs, Job Tasks and Job Items. Text is UTF-8; one thread at a time.
///
/// Any method may raise AutomationError; a comment names only the errors that its method adds. Every method
/// but Version and the two tag names first has its keys and its qualifier checked, and an unsafe one is
/// refused with 0x80040000 + 701 before anything is changed. A qualifier is put directly in front of every
/// table name. Rows are (column, row) arrays from 0. Nothing is wrapped in a transaction: what ran before an
/// error stays.
class KXJOB_EXPORT JobHelper {
public:
    JobHelper();
    JobHelper(const JobHelper&) = delete;
    JobHelper& operator=(const JobHelper&) = delete;
    ~JobHelper();

    // Vocabulary
    // ------------------------------------------------------------------------------------------------

    /// The version of this library, "8.3.1202.0".
    std::string Version();
    /// True for "COMPLETE" and "CANCELLED"; False for "CREATING", "READY", "QUEUED" and "RUNNING".
    /// Raises 0x80040000 + 743 for any other text; letter case counts.
    bool IsJobComplete(std::string StateId);
    /// True for "QUEUED" and "RUNNING"; False for "CREATING", "READY", "COMPLETE" and "CANCELLED".
    /// Raises 0x80040000 + 744 for any other text; letter case counts.
    bool IsJobRunning(std::string StateId);
    /// "parameters": the outer element of a job's parameters document.
    std::string ParametersTagName();
    /// "parameter": one element within it.
    std::string ParameterTagName();

    // Store
    // -----------------------------------------------------------------------------------------------------

    /// The script that creates the four tables and their indexes; statements end in ";" and a line break, and
    /// it is safe to run twice. `providerOptions` is handed on unchanged. Raises 0x80040000 + 705 for a
    /// provider that has no script.
    std::string JobTableCreationScript(Collection& providerOptions, DataStoreProvider Provider,
                                       std::string NameQualifier);

    // Job tasks
    // -------------------------------------------------------------------------------------------------

    /// Inserts a job task in state "RUNNING", started now, and returns its new GUID. The job is not checked.
    std::string RegisterJobTask(Value ConnectionString, std::string NameQualifier, Value Description,
                                std::string JobGUID, Value User, Value MachineName, std::int32_t PID,
                                std::int32_t ThreadID);
    /// Closes a task as "COMPLETE", ended now. An unknown task is no error.
    void UnRegisterJobTask(std::string ConnectionString, std::string NameQualifier, std::string JobTaskGUID);
    /// Closes a task as "COMPLETE" or "FAILED", ended now. An unknown task is no error.
    void UnRegisterJobTaskIndicatingStatus(std::string ConnectionString, std::string NameQualifier,
                                           std::string JobTaskGUID, bool Succeeded);
    /// Changes a task's last item and state. An empty text leaves its column; an unknown task is no error.
    /// Raises 0x80040000 + 747 when both are empty; only a trace line has been written then.
    void UpdateTaskRegistration(std::string ConnectionString, std::string NameQualifier,
                                std::string JobTaskGUID, std::string LastJobItem, std::string JobTaskStateID);
    /// Records the lock that a task holds; an empty `LockGUID` clears it. An unknown task is no error.
    void UpdateJobTaskLock(std::string ConnectionString, std::string NameQualifier, std::string JobTaskGUID,
                           std::string LockGUID);
    /// Leaves a command for a task; what it means is its worker's business. An unknown task is no error, and
    /// `JobTaskGUID` is not checked here.
    void UpdateTaskCommand(std::string ConnectionString, std::string NameQualifier, std::string JobTaskGUID,
                           std::string Command);
    /// Exchanges the editor lock of a job for a new one, which it returns, if the job still holds
    /// `OldLockGUID`: of several tasks that try at once with the same old lock, one succeeds.
    /// `NewLockDuration` is stored as given. Raises 0x80040000 + 745 when the job is gone and + 746 when
    /// another holds it; the task row is untouched then. After any other error the lock may have been
    /// exchanged: treat it as lost.
    std::string GetNewLockExcludingInterlopers(std::string ConnectionString, std::string NameQualifier,
                                               std::string JobGUID, std::string JobTaskGUID,
                                               std::string OldLockGUID, double NewLockDuration);

    // Job lifecycle
    // ---------------------------------------------------------------------------------------------

    /// Creates a job in state "CREATING" under the key `GUID`, after removing every earlier job of the same
    /// type and application state, whatever its state. Writes "JOB_CREATE" into the administration history.
    /// Raises 0x80040000 + 1433 when `TotalItemCount` is less than 1, + 854 while a KVR process is running, +
    /// 1312 for an unknown job type; nothing has been changed after these three. An empty connection string
    /// or qualifier takes all three of them from the configuration.
    void CreateJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                   std::string GUID, std::string JobTypeID, std::string Description,
                   std::string ApplicationStateGUID, std::string Parameters, std::int32_t TotalItemCount);
    /// Adds one item with its data, and returns its new GUID. The job is not checked.
    /// An empty connection string or qualifier takes all three of them from the configuration.
    std::string CreateJobItem(std::string ConnectionString, DataStoreProvider Provider,
                              std::string NameQualifier, std::string JobGUID, std::string IdentifierGUID,
                              std::string Data, std::int32_t Sequence);
    /// Adds an item without data for each element of a one-dimensional array, in its order, with sequence
    /// numbers from 0, in batches of up to 100; a batch is stored whole or not at all. Raises 0x80040000 +
    /// 749 when `IdentifierGUIDs` is no array, + 750 when it has more than one dimension.
    void CreateSimpleJobItems(std::string ConnectionString, DataStoreProvider Provider,
                              std::string NameQualifier, std::string JobGUID, Value IdentifierGUIDs);
    /// Deletes a job's items, its tasks and the job, in this order, and writes "JOB_REMOVED" into the
    /// administration history. An unknown job is no error, nor is one that is being worked on. An empty
    /// connection string or qualifier takes all three of them from the configuration.
    void RemoveJobAndItems(std::string ConnectionString, DataStoreProvider Provider,
                           std::string NameQualfier,  // sic
                           std::string JobGUID);
    /// Removes every job that belongs neither to the production nor to the development state of the
    /// container, then the items and tasks without a job. Sweeps the one container that the arguments
    /// designate. With an empty qualifier, what it finds is removed by RemoveJobAndItems from the store of
    /// the configuration. Nothing is locked: of a job that is made while this runs, items and tasks that are
    /// there already may be taken for such without a job.
    void RemoveIrrelevantJobsInAllContainers(std::string ConnectionString, DataStoreProvider Provider,
                                             std::string NameQualifier);
    /// The same for the two application states given; a null GUID as `ProductionStateGUID` means no such
    /// state. The description of an error in looking or removing says which of the two it was.
    void RemoveIrrelevantJobsInContainer(std::string ConnectionString, DataStoreProvider Provider,
                                         std::string NameQualifier, std::string ProductionStateGUID,
                                         std::string DevelopmentStateGUID);

    // Queries
    // ---------------------------------------------------------------------------------------------------

    /// Jobs, filtered by every argument that is not empty. 14 columns as in JobInformationFields; Empty if no
    /// row. `ApplicationStateGUID` is only read. An empty connection string or qualifier takes all three of
    /// them from the configuration.
    Value GetJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                 std::string JobGUID = {}, std::string JobTypeID = {}, std::string JobStateID = {},
                 const std::string& ApplicationStateGUID = {});
    /// One job type, or every one when `JobTypeID` is empty. 4 columns as in JobTypeInformationFields; Empty
    /// if no row.
    Value GetJobType(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                     std::string JobTypeID = {});
    /// The parameters document of a job.
    /// Raises 0x80040000 + 702 for an unknown job, Invalid use of Null (0x800A005E) for one without
    /// parameters.
    std::string GetJobParameters(std::string ConnectionString, DataStoreProvider Provider,
                                 std::string NameQualifier, std::string JobGUID);
    /// One item. 7 columns as in JobItemInformationFields. Raises 0x80040000 + 702 for an unknown one.
    Value GetJobItem(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                     std::string JobItemGUID);
    /// The items of a job by ascending sequence. Columns jobitemguid, identifier, jobitemstateid, sequence.
    /// Raises 0x80040000 + 702 when there is none.
    Value GetJobItems(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                      std::string JobGUID);
    /// The tasks of one job, or of every job when `JobGUID` is empty.
    /// Returns 13 columns by n rows, (column, row) from 0, columns as in JobTaskFields; Empty if no row.
    /// An empty connection string or qualifier takes all three of them from the configuration.
    Value GetJobTasks(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                      std::string JobGUID = {});

    // Statistics
    // ------------------------------------------------------------------------------------------------

    /// The counters of one job, or of every job when `JobGUID` is empty. 13 columns as in StatisticsFields.
    /// Raises 0x80040000 + 702 for an unknown job; Empty when all are asked for and there is none.
    /// An empty connection string or qualifier takes all three of them from the configuration.
    Value GetJobExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                    std::string NameQualifier, std::string JobGUID = {});
    /// The same, but Empty for an unknown job.
    Value GetJobExecutionStatisticsAllowMissing(std::string ConnectionString, DataStoreProvider Provider,
                                                std::string NameQualifier, std::string JobGUID);
    /// State, start and end of the item with this sequence number. Raises 0x80040000 + 702 when there is
    /// none.
    Value GetJobItemExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                        std::string NameQualifier, std::string JobGUID,
                                        std::int32_t SequenceNumber);
    /// How many items of a job are at each state, or at the one state given. Columns state, count; Empty if
    /// no row.
    Value JobItemsAtState(std::string ConnectionString, std::string NameQualifier, std::string JobGUID,
                          std::string StateId = {});
    /// The same by machine of the task that owns the items; items of no task are left out.
    /// Columns machine, state, count; Empty if no row.
    Value OwnersOfJobItemsAtState(std::string ConnectionString, std::string NameQualifier,
                                  std::string JobGUID, std::string StateId = {});

    // Status and failure notes
    // ----------------------------------------------------------------------------------

    /// Sets a job's state to any text and writes "JOB_STATUS_UPDATE" into the administration history.
    /// An unknown job is no error. An empty connection string or qualifier takes all three from the
    /// configuration.
    void UpdateJobStatus(std::string ConnectionString, DataStoreProvider Provider,
                         std::string NameQualfier,  // sic
                         std::string JobGUID, std::string JobStateID);
    /// Sets an item's state, times and task; empty texts are written too. An unknown item is no error.
    void UpdateJobItemStatus(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualfier,  // sic
                             std::string JobItemGUID, std::string JobItemStateID,
                             std::string StartISODateTime, std::string EndISODateTime,
                             std::string JobTaskGUID);
    /// Appends a block (time, machine, user, process, thread) and the note to a job's failure note. Two
    /// callers that append at once can lose one block. Raises 0x80040000 + 702 or + 751 for an unknown job.
    void AppendJobFailureNote(std::string ConnectionString, DataStoreProvider Provider,
                              std::string NameQualfier,  // sic
                              std::string JobGUID, std::string AdditionalNote);
    /// The same for an item. Raises 0x80040000 + 702 or + 752 for an unknown item.
    void AppendJobItemFailureNote(std::string ConnectionString, DataStoreProvider Provider,
                                  std::string NameQualfier,  // sic
                                  std::string JobItemGUID, std::string AdditionalNote);

    // Scheduling
    // ------------------------------------------------------------------------------------------------

    /// The job of the container that this machine should work on next, and its rank in (0, 1]: a QUEUED job
    /// before any RUNNING one, else the RUNNING job with the fewest RUNNING tasks, at random among equals,
    /// and only jobs whose implementation can be created here. Nothing is written, and two callers may get
    /// the same job. When there is none, `JobGUID` keeps its value: clear it before the call. Raises
    /// 0x80040000 + 855 when a job's type has no metadata.
    void GetNextJob(std::string ConnectionString, DataStoreProvider Provider, std::string NameQualifier,
                    std::string& JobGUID, double& JobRank);

private:
    std::shared_ptr<ConnectionSettings> RMConnectionDocument();
    void UseConfigurationIfIncomplete(Frame& frame, std::string& ConnectionString,
                                      DataStoreProvider& Provider, std::string& NameQualifier);
    void piAdminHistoryWrite(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualifier, std::string ActionCode, std::string Detail);
    Value piGetJobExecutionStatistics(std::string ConnectionString, DataStoreProvider Provider,
                                      std::string NameQualifier, std::string JobGUID, bool AllowMissing);
    void RemoveOrphanedJobInformation(std::string ConnectionString, DataStoreProvider Provider,
                                      std::string NameQualifier);
    void LowImpactGetNextJob(std::string ConnectionString, DataStoreProvider Provider,
                             std::string NameQualifier, std::string& JobGUID, double& JobRank);
    void GetQueuedAndRunningJobs(std::string ConnectionString, DataStoreProvider Provider,
                                 std::string NameQualifier, std::shared_ptr<Collection>& QueuedJobs,
                                 std::shared_ptr<Collection>& RunningJobs);
    std::shared_ptr<KeyedCollection> GetJobTypeProgIDs(std::string ConnectionString,
                                                       DataStoreProvider Provider, std::string NameQualifier);
    void GetHighestRankingRunningJobs(std::string ConnectionString, DataStoreProvider Provider,
                                      std::string NameQualifier, std::shared_ptr<Collection>& RunningJobs,
                                      std::shared_ptr<Collection>& Candidates, double& Rank);

    std::shared_ptr<ConnectionSettings> document_;
};

}  // namespace kxjob

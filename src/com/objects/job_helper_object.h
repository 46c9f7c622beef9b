#pragma once

#include <kxJob.h>

#include "com/objects/dual_object.h"
#include "kxjob/job_helper.h"

namespace kxjob {

/// JobHelper as automation clients see it: each method hands over to the library's method of that name.
class JobHelperObject final : public DualObject<_JobHelper> {
public:
    using DualObject::DualObject;

    // Vocabulary
    STDMETHODIMP Version(BSTR* result) override;
    STDMETHODIMP IsJobComplete(BSTR StateId, VARIANT_BOOL* result) override;
    STDMETHODIMP IsJobRunning(BSTR StateId, VARIANT_BOOL* result) override;
    STDMETHODIMP ParametersTagName(BSTR* result) override;
    STDMETHODIMP ParameterTagName(BSTR* result) override;

    // Store
    STDMETHODIMP JobTableCreationScript(IDispatch** providerOptions, ::DataStoreProvider Provider,
                                        BSTR NameQualifier, BSTR* result) override;

    // Job tasks
    STDMETHODIMP RegisterJobTask(VARIANT ConnectionString, BSTR NameQualifier, VARIANT Description,
                                 BSTR JobGUID, VARIANT User, VARIANT MachineName, LONG PID, LONG ThreadID,
                                 BSTR* result) override;
    STDMETHODIMP UnRegisterJobTask(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID) override;
    STDMETHODIMP UnRegisterJobTaskIndicatingStatus(BSTR ConnectionString, BSTR NameQualifier,
                                                   BSTR JobTaskGUID, VARIANT_BOOL Succeeded) override;
    STDMETHODIMP UpdateTaskRegistration(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID,
                                        BSTR LastJobItem, BSTR JobTaskStateID) override;
    STDMETHODIMP UpdateJobTaskLock(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID,
                                   BSTR LockGUID) override;
    STDMETHODIMP UpdateTaskCommand(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID,
                                   BSTR Command) override;
    STDMETHODIMP GetNewLockExcludingInterlopers(BSTR ConnectionString, BSTR NameQualifier, BSTR JobGUID,
                                                BSTR JobTaskGUID, BSTR OldLockGUID, double NewLockDuration,
                                                BSTR* result) override;

    // Job lifecycle
    STDMETHODIMP CreateJob(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier, BSTR GUID,
                           BSTR JobTypeID, BSTR Description, BSTR ApplicationStateGUID, BSTR Parameters,
                           LONG TotalItemCount) override;
    STDMETHODIMP CreateJobItem(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                               BSTR JobGUID, BSTR IdentifierGUID, BSTR Data, LONG Sequence,
                               BSTR* result) override;
    STDMETHODIMP CreateSimpleJobItems(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                                      BSTR JobGUID, VARIANT IdentifierGUIDs) override;
    STDMETHODIMP RemoveJobAndItems(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualfier,
                                   BSTR JobGUID) override;
    STDMETHODIMP RemoveIrrelevantJobsInAllContainers(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                     BSTR NameQualifier) override;
    STDMETHODIMP RemoveIrrelevantJobsInContainer(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                 BSTR NameQualifier, BSTR ProductionStateGUID,
                                                 BSTR DevelopmentStateGUID) override;

    // Queries
    STDMETHODIMP GetJob(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier, BSTR JobGUID,
                        BSTR JobTypeID, BSTR JobStateID, BSTR* ApplicationStateGUID,
                        VARIANT* result) override;
    STDMETHODIMP GetJobType(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                            BSTR JobTypeID, VARIANT* result) override;
    STDMETHODIMP GetJobParameters(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                                  BSTR JobGUID, BSTR* result) override;
    STDMETHODIMP GetJobItem(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                            BSTR JobItemGUID, VARIANT* result) override;
    STDMETHODIMP GetJobItems(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                             BSTR JobGUID, VARIANT* result) override;
    STDMETHODIMP GetJobTasks(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                             BSTR JobGUID, VARIANT* result) override;

    // Statistics
    STDMETHODIMP GetJobExecutionStatistics(BSTR ConnectionString, ::DataStoreProvider Provider,
                                           BSTR NameQualifier, BSTR JobGUID, VARIANT* result) override;
    STDMETHODIMP GetJobExecutionStatisticsAllowMissing(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                       BSTR NameQualifier, BSTR JobGUID,
                                                       VARIANT* result) override;
    STDMETHODIMP GetJobItemExecutionStatistics(BSTR ConnectionString, ::DataStoreProvider Provider,
                                               BSTR NameQualifier, BSTR JobGUID, LONG SequenceNumber,
                                               VARIANT* result) override;
    STDMETHODIMP JobItemsAtState(BSTR ConnectionString, BSTR NameQualifier, BSTR JobGUID, BSTR StateId,
                                 VARIANT* result) override;
    STDMETHODIMP OwnersOfJobItemsAtState(BSTR ConnectionString, BSTR NameQualifier, BSTR JobGUID,
                                         BSTR StateId, VARIANT* result) override;

    // Status and failure notes
    STDMETHODIMP UpdateJobStatus(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualfier,
                                 BSTR JobGUID, BSTR JobStateID) override;
    STDMETHODIMP UpdateJobItemStatus(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualfier,
                                     BSTR JobItemGUID, BSTR JobItemStateID, BSTR StartISODateTime,
                                     BSTR EndISODateTime, BSTR JobTaskGUID) override;
    STDMETHODIMP AppendJobFailureNote(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualfier,
                                      BSTR JobGUID, BSTR AdditionalNote) override;
    STDMETHODIMP AppendJobItemFailureNote(BSTR ConnectionString, ::DataStoreProvider Provider,
                                          BSTR NameQualfier, BSTR JobItemGUID, BSTR AdditionalNote) override;

    // Scheduling
    STDMETHODIMP GetNextJob(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                            BSTR* JobGUID, double* JobRank) override;

private:
    JobHelper helper_;
};

}  // namespace kxjob

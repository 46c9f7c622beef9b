#include "work/protocol/job_course.h"

#include <fmt/format.h>

#include <array>
#include <exception>

#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "kxjob/component_registry.h"
#include "work/protocol/item_lots.h"

namespace kxjob::command {
namespace {

constexpr const char* kHistoryComponent = "AppModelAdmin_83.Admin";
constexpr auto kJobGone = static_cast<std::int32_t>(kObjectErrorBase + 745);
constexpr auto kNoSuchJob = static_cast<std::int32_t>(kObjectErrorBase + 751);
constexpr auto kLockTaken = static_cast<std::int32_t>(kObjectErrorBase + 746);

struct StateAndLock {
    std::string state;
    std::string lock;
};

StateAndLock Read(JobStore& store, const std::string& job) {
    const Value rows =
        store.Query(fmt::format("SELECT jobstateid, jobeditorlockguid FROM {} WHERE jobguid = {}",
                                store.Table("job"), store.Literal(job)));
    if (RowCount(rows) == 0) return {};
    return {rows.Rows().Cell(0, 0).ToJoinedText(), rows.Rows().Cell(1, 0).ToJoinedText()};
}

/// As JobHelper writes it when it sets a state.
void WriteHistory(JobStore& store, const std::string& job, const char* state) {
    const std::array<Value, 4> arguments{
        store.Connection().connectionString, store.Connection().nameQualifier, "JOB_STATUS_UPDATE",
        "<job><jobguid>" + job + "</jobguid><jobstateid>" + state + "</jobstateid></job>"};
    CreateComponent(kHistoryComponent)->Call("AdminHistoryWrite", arguments);
}

/// A job that another program set RUNNING has no lock that could be exchanged.
void GiveFirstLock(JobStore& store, const std::string& job) {
    store.Execute(
        fmt::format("UPDATE {} SET jobeditorlockguid = {} WHERE jobguid = {}"
                    " AND (jobeditorlockguid IS NULL OR jobeditorlockguid = '')",
                    store.Table("job"), store.Literal(NewGuid()), store.Literal(job)));
}

/// Whether a RUNNING task other than this one holds the lock.
bool IsHeldByOther(JobStore& store, const TaskName& name, const std::string& lock) {
    return store
               .Cell(fmt::format("SELECT COUNT(*) FROM {} WHERE jobguid = {} AND jobtaskstateid = 'RUNNING'"
                                 " AND lockguid = {} AND jobtaskguid <> {}",
                                 store.Table("jobtask"), store.Literal(name.job), store.Literal(lock),
                                 store.Literal(name.task)))
               .ToDouble() > 0;
}

/// The new lock; empty when another has it.
std::string TakeLock(JobStore& store, const TaskName& name, const std::string& oldLock, double seconds) {
    try {
        return store.Jobs().GetNewLockExcludingInterlopers(store.Connection().connectionString,
                                                           store.Connection().nameQualifier, name.job,
                                                           name.task, oldLock, seconds);
    } catch (const AutomationError& error) {
        if (error.Number() != kLockTaken && error.Number() != kJobGone) throw;
        return {};
    }
}

}  // namespace

JobStart StartJob(JobStore& store, const std::string& job, const std::string& lock) {
    store.Execute(fmt::format(
        "UPDATE {} SET jobstateid = 'RUNNING', startdt = {}, jobeditorlockguid = {}"
        " WHERE jobguid = {} AND jobstateid = 'QUEUED'",
        store.Table("job"), store.Literal(NowISODateTime()), store.Literal(lock), store.Literal(job)));
    const StateAndLock now = Read(store, job);
    if (now.state != kRunning) return JobStart::NotToBeWorked;
    if (now.lock != lock) return JobStart::Already;
    WriteHistory(store, job, kRunning);
    return JobStart::ByThisCall;
}

JobEnd EndJob(JobStore& store, const TaskName& name, double lockSeconds) {
    if (HasUnfinishedItems(store, name.job)) return JobEnd::NotYet;
    StateAndLock now = Read(store, name.job);
    if (now.state != kRunning) return JobEnd::ByOthers;
    if (now.lock.empty()) {
        GiveFirstLock(store, name.job);
        now = Read(store, name.job);
    }
    if (IsHeldByOther(store, name, now.lock)) return JobEnd::ByOthers;
    const std::string lock = TakeLock(store, name, now.lock, lockSeconds);
    if (lock.empty()) return JobEnd::ByOthers;
    const std::string lastLock = NewGuid();  // who has read the one before can exchange it no more
    store.Execute(
        fmt::format("UPDATE {} SET jobstateid = 'COMPLETE', jobeditorlockguid = {} WHERE jobguid = {} AND "
                    "jobstateid = 'RUNNING'"
                    " AND jobeditorlockguid = {} AND NOT EXISTS (SELECT 1 FROM {} WHERE jobguid = {}"
                    " AND ({} OR jobitemstateid = 'RUNNING'))",
                    store.Table("job"), store.Literal(lastLock), store.Literal(name.job), store.Literal(lock),
                    store.Table("JobItem"), store.Literal(name.job), kWaiting));
    const StateAndLock then = Read(store, name.job);
    if (then.state != kComplete) return JobEnd::NotYet;
    if (then.lock != lastLock) return JobEnd::ByOthers;
    WriteHistory(store, name.job, kComplete);
    return JobEnd::ByThisCall;
}

std::string TellJobFinished(JobStore& store, const std::string& job, const std::string& progId) {
    const StoreConnection& connection = store.Connection();
    try {
        const std::array<Value, 5> arguments{connection.connectionString, connection.provider,
                                             connection.nameQualifier, job, kComplete};
        CreateComponent(progId)->Call("JobFinished", arguments);
        return {};
    } catch (const std::exception& error) {
        return progId + ".JobFinished: " + error.what();
    }
}

void NoteOnJob(JobStore& store, const std::string& job, const std::string& note) {
    const StoreConnection& connection = store.Connection();
    try {
        store.Jobs().AppendJobFailureNote(connection.connectionString, connection.provider,
                                          connection.nameQualifier, job, note);
    } catch (const AutomationError& error) {
        if (error.Number() != error_number::kNoRow && error.Number() != kNoSuchJob) throw;
    }
}

}  // namespace kxjob::command

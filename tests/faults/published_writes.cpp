#include "faults/published_writes.h"

#include <map>

#include "faults/fault_world.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

using Writes = std::vector<Write>;

std::string Quoted(const std::string& text) {
    return "'" + text + "'";
}

std::string OfJob() {
    return " WHERE jobguid = " + Quoted(kJobGuid);
}

std::string OfTask() {
    return " WHERE jobtaskguid = " + Quoted(kTaskGuid);
}

Write History(const std::string& action, const std::string& detail) {
    return {
        "INSERT INTO kx_adminhistory (historyid, writtendt, actioncode, detail, usercontext)"
        " VALUES ('{new}" +
        action + "', '{now}', " + Quoted(action) + ", " + Quoted(detail) + ", '')"};
}

Writes operator+(Writes first, const Writes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// Items, tasks and the job go one by one, and then it is told.
Writes Removal() {
    return {{"DELETE FROM kx_JobItem" + OfJob()},
            {"DELETE FROM kx_jobtask" + OfJob()},
            {"DELETE FROM kx_job" + OfJob()},
            History("JOB_REMOVED", std::string("<job><jobguid>") + kJobGuid + "</jobguid></job>")};
}

Writes Creation() {
    const std::string job = kNewJobGuid;
    return {{"INSERT INTO kx_job (jobguid, jobtypeid, description, appstateguid, jobstateid, totalitemcount)"
             " VALUES (" +
             Quoted(job) + ", " + Quoted(kJobType) + ", 'a job', " + Quoted(kStateGuid) + ", 'CREATING', 3)"},
            {"UPDATE kx_job SET parameters = '<parameters/>' WHERE jobguid = " + Quoted(job)},
            History("JOB_CREATE", std::string("<job><jobtypeid>") + kJobType + "</jobtypeid><jobguid>" + job +
                                      "</jobguid><appstateguid>" + kStateGuid +
                                      "</appstateguid><totalitemcount>3</totalitemcount></job>")};
}

/// The irrelevant job goes first, then the orphans of the two tables.
Writes Sweep() {
    const std::string orphans = " WHERE jobguid NOT IN(" + Quoted(kStayingJobGuid) + ")";
    return Removal() + Writes{{"DELETE FROM kx_JobItem" + orphans}, {"DELETE FROM kx_jobtask" + orphans}};
}

std::string SimpleItem(const std::string& identifier, int sequence) {
    return "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence) VALUES (" + Quoted(kJobGuid) +
           ", '{new}" + std::to_string(sequence) + "', " + Quoted(identifier) + ", " +
           std::to_string(sequence) + ")";
}

std::map<std::string, Writes> EveryPublishedWrite() {
    return {
        {"RegisterJobTask",
         {{"INSERT INTO kx_jobtask (jobtaskguid, description, jobguid, usercontext, machine, processid,"
           " threadid, startdt, jobtaskstateid) VALUES ('{new}', 'a task', " +
           Quoted(kJobGuid) + ", 'a user', 'a machine', 71, 72, '{now}', 'RUNNING')"}}},
        {"UnRegisterJobTask",
         {{"UPDATE kx_jobtask SET jobtaskstateid = 'COMPLETE', enddt = '{now}'" + OfTask()}}},
        {"UnRegisterJobTaskIndicatingStatus",
         {{"UPDATE kx_jobtask SET jobtaskstateid = 'FAILED', enddt = '{now}'" + OfTask()}}},
        {"UpdateTaskRegistration",
         {{"UPDATE kx_jobtask SET lastjobitem = " + Quoted(kItemGuid) + ", jobtaskstateid = 'RUNNING'" +
           OfTask()}}},
        {"UpdateJobTaskLock", {{"UPDATE kx_jobtask SET lockguid = " + Quoted(kOtherLockGuid) + OfTask()}}},
        {"UpdateTaskCommand", {{"UPDATE kx_jobtask SET command = 'STOP'" + OfTask()}}},
        {"GetNewLockExcludingInterlopers",
         {{"UPDATE kx_job SET jobeditorlockguid = '{new}', lockduration = 90.5" + OfJob()},
          {"UPDATE kx_jobtask SET lockguid = '{new}'" + OfTask()}}},
        {"CreateJob", Removal() + Creation()},
        {"CreateJobItem",
         {{"INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence) VALUES ('{new}', " +
           Quoted(kJobGuid) + ", " + Quoted(kIdentifierGuid) + ", 4)"},
          {"UPDATE kx_JobItem SET data = 'some data' WHERE jobitemguid = '{new}'"}}},
        {"CreateSimpleJobItems", {{SimpleItem(kIdentifierGuid, 0), SimpleItem(kOtherIdentifierGuid, 1)}}},
        {"RemoveJobAndItems", Removal()},
        {"RemoveIrrelevantJobsInAllContainers", Sweep()},
        {"RemoveIrrelevantJobsInContainer", Sweep()},
        {"UpdateJobStatus",
         {{"UPDATE kx_job SET jobstateid = 'RUNNING'" + OfJob()},
          History("JOB_STATUS_UPDATE", std::string("<job><jobguid>") + kJobGuid +
                                           "</jobguid><jobstateid>RUNNING</jobstateid></job>")}},
        {"UpdateJobItemStatus",
         {{"UPDATE kx_JobItem SET jobitemstateid = 'COMPLETE', startdt = '2026-03-01T09:30:15.123Z',"
           " enddt = '2026-03-01T09:31:00.000Z', jobtaskguid = " +
           Quoted(kTaskGuid) + " WHERE jobitemguid = " + Quoted(kItemGuid)}}},
        {"AppendJobFailureNote",
         {{"UPDATE kx_job SET failurenote = 'an old note\r\n\r\n{circumstances}a note'" + OfJob()}}},
        {"AppendJobItemFailureNote",
         {{"UPDATE kx_JobItem SET failurenote = '{circumstances}a note' WHERE jobitemguid = " +
           Quoted(kItemGuid)}}},
    };
}

}  // namespace

std::vector<Write> PublishedWrites(const std::string& method) {
    static const std::map<std::string, Writes> all = EveryPublishedWrite();
    const auto found = all.find(method);
    return found == all.end() ? Writes() : found->second;
}

std::vector<Write> WritesOfSimpleItems(int identifiers) {
    Writes groups;
    for (int i = 0; i < identifiers; ++i) {
        if (i % 100 == 0) groups.emplace_back();
        groups.back().push_back(SimpleItem(std::to_string(i), i));
    }
    return groups;
}

}  // namespace kxjob::testing_support

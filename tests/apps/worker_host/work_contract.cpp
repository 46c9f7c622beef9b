#include "apps/worker_host/work_contract.h"

#include <fstream>

#include "collaborators/this_thread.h"
#include "kxjob/caller_texts.h"

namespace kxjob::testing_support {

using command::JobStore;
using command::TaskName;

void WorkContract::SetUp() {
    if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
    std::ofstream(folder_.File("kxjob.conf")) << "log.file = " << folder_.File("log") << "\n";
    database_ = GetParam().makeStore();
    connection_ = {database_->ConnectionString(), GetParam().provider, "kx_"};
    Store(connection_.connectionString, connection_.provider, connection_.nameQualifier).CreateTables();
    store_ = std::make_unique<JobStore>(connection_);
}

void WorkContract::TearDown() {
    InstallCollaborators(nullptr);
}

void WorkContract::AddType(const std::string& type, const std::string& progId,
                           const std::string& notification) {
    store_->Execute(
        "INSERT INTO kx_JobType (jobtypeid, description, implprogid, notificationprogid) VALUES ('" + type +
        "', '', '" + progId + "', '" + notification + "')");
}

std::string WorkContract::MakeJob(const std::string& type, const std::string& state,
                                  const std::vector<std::int64_t>& sequences) {
    const std::string job = NewGuid();
    std::vector<std::string> statements{
        "INSERT INTO kx_job (jobguid, jobtypeid, description, jobstateid, totalitemcount) VALUES ('" + job +
        "', '" + type + "', 'a job', '" + state + "', " + std::to_string(sequences.size()) + ")"};
    for (const std::int64_t sequence : sequences) {
        const std::string number = std::to_string(sequence);
        statements.push_back("INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence) VALUES ('" +
                             NewGuid() + "', '" + job + "', 'item " + number + "', " + number + ")");
    }
    store_->ExecuteTogether(statements);
    return job;
}

std::string WorkContract::MakeJob(const std::string& type, const std::string& state, int items) {
    std::vector<std::int64_t> sequences;
    for (int i = 0; i < items; ++i) sequences.push_back(i);
    return MakeJob(type, state, sequences);
}

void WorkContract::SetState(const std::string& job, const std::string& state) {
    store_->Execute("UPDATE kx_job SET jobstateid = '" + state + "' WHERE jobguid = '" + job + "'");
}

TaskName WorkContract::NewTask(const std::string& job) {
    return {job, RegisterTask(*store_, job, "a task", 60)};
}

void WorkContract::LetExpire(const TaskName& name) {
    store_->Execute("UPDATE kx_jobtask SET enddt = '2026-03-01T09:30:15.123Z' WHERE jobtaskguid = '" +
                    name.task + "'");
}

Value WorkContract::ItemsAt(const std::string& job, const std::string& state) {
    const std::string condition =
        state.empty() ? "jobitemstateid IS NULL" : "jobitemstateid = '" + state + "'";
    return Cell("SELECT COUNT(*) FROM kx_JobItem WHERE jobguid = '" + job + "' AND " + condition);
}

Value WorkContract::JobCell(const std::string& job, const std::string& column) {
    return Cell("SELECT " + column + " FROM kx_job WHERE jobguid = '" + job + "'");
}

Value WorkContract::TaskState(const TaskName& name) {
    return Cell("SELECT jobtaskstateid FROM kx_jobtask WHERE jobtaskguid = '" + name.task + "'");
}

}  // namespace kxjob::testing_support
